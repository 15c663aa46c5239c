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
};

TEST_F(SpoolerBridgeTest, ThePlottersDefaultsComeBackFromItsConfiguration) {
    expectRoundTrip(L"Plotter");
}
TEST_F(SpoolerBridgeTest, TheOfficesDefaultsComeBackFromItsConfiguration) {
    expectRoundTrip(L"Office");
}
}  // namespace
