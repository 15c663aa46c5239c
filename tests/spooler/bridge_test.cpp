#include <gmock/gmock.h>

#include <memory>

#include <platen/pia_report.h>
#include <platen/plotcfg.h>
#include <platen/print.h>
#include "tests/print/device_modes.h"
#include "tests/spooler/support.h"

using testing::IsEmpty;

namespace {

class SpoolerBridgeTest : public SpoolerTest {
protected:
    SpoolerBridgeTest() : before_(registerPrinterSystem(&wut::installedPrinters())) {}
    ~SpoolerBridgeTest() override { registerPrinterSystem(before_); }

    /// Makes a configuration for the queue, and compares what it says with the queue's defaults.
    static void expectRoundTrip(const wchar_t* queue) {
        const std::unique_ptr<CPlotCfg3> config(CPlotCfg3::create(queue));
        ASSERT_NE(config, nullptr);
        EXPECT_FALSE(config->media.emptyBounds());
        EXPECT_GE(config->resColorMem.colorDepth, 1);
        wut::PrintData defaults(queue);
        wut::PrintData data(queue);
        PiaReport report;
        ASSERT_TRUE(config->toPrintData(data, &report));
        EXPECT_EQ(report.warningCount(), 0U);
        EXPECT_THAT(differences(deviceModeOf(defaults), deviceModeOf(data)), IsEmpty());
        bool changed = true;
        EXPECT_TRUE(config->fromPrintData(data, queue, false, changed));
        EXPECT_FALSE(changed);
    }

    /// Turns one setting after another, and expects only its fields to follow.
    static void expectEachSettingAlone(const wchar_t* queue) {
        const std::unique_ptr<CPlotCfg3> config(CPlotCfg3::create(queue));
        ASSERT_NE(config, nullptr);
        const auto applied = [queue](const CPlotCfg3& source) {
            wut::PrintData data(queue);
            EXPECT_TRUE(source.toPrintData(data));
            return deviceModeOf(data);
        };
        const std::vector<std::byte> before = applied(*config);
        CPlotCfg3 turned(*config);
        turned.media.dmOrientation = 3 - turned.media.dmOrientation;
        EXPECT_EQ(differences(before, applied(turned)), std::set<std::string>{"dmOrientation"});
        CPlotCfg3 copies(*config);
        copies.media.numberOfCopies += 2;
        EXPECT_EQ(differences(before, applied(copies)), std::set<std::string>{"dmCopies"});
        CPlotCfg3 bytes(*config);
        std::wstring digits;
        ASSERT_TRUE(bytes.custom->getBin(digits, L"RawPrivateDeviceData"));
        ASSERT_FALSE(digits.empty());
        digits.back() = digits.back() == L'0' ? L'1' : L'0';
        ASSERT_TRUE(bytes.custom->setBin(digits, L"RawPrivateDeviceData", false));
        EXPECT_EQ(differences(before, applied(bytes)), std::set<std::string>{"private"});
    }

private:
    const PrinterSystem* before_;
};

TEST_F(SpoolerBridgeTest, ThePlottersDefaultsComeBackFromItsConfiguration) {
    expectRoundTrip(L"Plotter");
}
TEST_F(SpoolerBridgeTest, TheOfficesDefaultsComeBackFromItsConfiguration) {
    expectRoundTrip(L"Office");
}
TEST_F(SpoolerBridgeTest, ThePlotterTakesEachSettingAlone) { expectEachSettingAlone(L"Plotter"); }
TEST_F(SpoolerBridgeTest, TheOfficeTakesEachSettingAlone) { expectEachSettingAlone(L"Office"); }

}  // namespace
