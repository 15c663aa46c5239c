/// Printers in memory, for documents.
#pragma once

#include <gtest/gtest.h>
#include <wx/init.h>
#include <wx/log.h>

#include <memory>
#include <string>

#include <platen/plotcfg.h>
#include <platen/print.h>
#include "tests/print/device_modes.h"
#include "tests/support/fake_spooler.h"

class BridgeTest : public testing::Test {
protected:
    BridgeTest() : before_(registerPrinterSystem(&wut::installedPrinters())) {
        wut::registerPrintFactory();
        wut::onPrinterSettingsChanged(OdString());
    }
    ~BridgeTest() override {
        // Every handle is given back.
        EXPECT_EQ(spooler_.handles.size(), 0U);
        wut::unRegisterPrintFactory();
        registerPrinterSystem(before_);
    }

    /// A printer whose driver has every setting that documents store.
    test_support::FakePrinter& addFull(const std::wstring& name) {
        test_support::FakePrinter& printer = spooler_.add(name);
        printer.comment = L"Second floor";
        DEVMODEW& mode = printer.devMode;
        mode.dmFields |= DM_SCALE | DM_DEFAULTSOURCE | DM_DUPLEX | DM_YRESOLUTION | DM_TTOPTION |
                         DM_COLLATE | DM_FORMNAME | DM_ICMMETHOD | DM_ICMINTENT | DM_MEDIATYPE |
                         DM_DITHERTYPE;
        mode.dmScale = 80;
        mode.dmDefaultSource = DMBIN_MANUAL;
        mode.dmDuplex = DMDUP_VERTICAL;
        mode.dmYResolution = 1200;
        mode.dmTTOption = DMTT_DOWNLOAD;
        mode.dmCollate = DMCOLLATE_TRUE;
        std::wstring(L"A4").copy(mode.dmFormName, CCHFORMNAME - 1);
        mode.dmICMMethod = DMICMMETHOD_SYSTEM;
        mode.dmICMIntent = DMICM_CONTRAST;
        mode.dmMediaType = DMMEDIA_GLOSSY;
        mode.dmDitherType = DMDITHER_FINE;
        return printer;
    }

    static std::unique_ptr<CPlotCfg3> create(const wchar_t* printer) {
        const wxLogNull quiet;
        return std::unique_ptr<CPlotCfg3>(CPlotCfg3::create(printer));
    }

    test_support::FakeSpooler spooler_;

private:
    wut::SpoolerForTest inPlace_{spooler_};
    wxInitializer wx_;
    const PrinterSystem* before_;
};
