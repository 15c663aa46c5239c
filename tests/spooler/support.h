/// Tests against a real spooler: the private queues Plotter and Office that scripts/test-printers
/// starts. Each test is a process of its own, since Windows keeps what a driver merged.
#pragma once

#include <gtest/gtest.h>
#include <wx/init.h>

#include <cstdlib>
#include <filesystem>

#include <platen/print.h>

class SpoolerTest : public testing::Test {
protected:
    SpoolerTest() { wut::registerPrintFactory(); }
    ~SpoolerTest() override {
        wut::unRegisterPrintFactory();
        registerPrinterSystem(before_);
    }

    /// Of the spooler; without it there is nothing to test, which is a failure.
    static std::filesystem::path folder() {
        const char* folder = std::getenv("PLATEN_TEST_PRINTERS");
        EXPECT_NE(folder, nullptr) << "start the printers with scripts/test-printers";
        return folder == nullptr ? "" : folder;
    }

private:
    wxInitializer library_;
    const PrinterSystem* before_ = registerPrinterSystem(&wut::installedPrinters());
};
