#include <gmock/gmock.h>

#include <wx/dcmemory.h>

#include <tuple>
#include <utility>

#include "print/hex_text.h"
#include "print/page_bounds.h"
#include "tests/print/bridge_support.h"

namespace {

using Resolution = CResColorMemNode::CResolutionNode;

class BridgeNodesTest : public BridgeTest {
protected:
    BridgeNodesTest() { spooler_.add(L"Fake"); }
};

TEST_F(BridgeNodesTest, ResolutionsAreNamedAfterWhatTheyAre) {
    const std::tuple<const wchar_t*, short, std::int16_t, const wchar_t*> cases[] = {
        {L"", 600, 600, L"600x600_None"},
        {L"plain", 600, 300, L"600x300"},
        {L"300x300_Best", 600, 0, L"600x0_Best"},
        {L"a_b_c", 720, 360, L"720x360_c"},
    };
    for (const auto& [name, quality, y, expected] : cases) {
        wut::PrintData data(L"Fake");
        data.setDmQuality(quality);
        wut::WindowsPrintNativeData::GetNativeData(data)->yResolution = y;
        Resolution resolution;
        resolution.name = name;
        EXPECT_TRUE(resolution.set(data, nullptr));
        EXPECT_EQ(resolution.name, expected);
        EXPECT_EQ(resolution.physResolutionX, quality);
        EXPECT_EQ(resolution.effectiveResolutionY, y);
    }
}

TEST_F(BridgeNodesTest, AQualityNeedsAContext) {
    wut::PrintData data(L"Fake");
    data.setDmQuality(DMRES_HIGH);
    Resolution resolution;
    resolution.name = L"300x300_Best";
    EXPECT_FALSE(resolution.set(data, nullptr));
    EXPECT_EQ(resolution.name, L"300x300_Best");
    wxMemoryDC screen;
    for (const auto& [before, after, changes] :
         {std::tuple(L"300x300_Best", L"DMRES_HIGH_Best", true),
          std::tuple(L"DMRES_HIGH", L"DMRES_HIGH_HIGH", true),
          std::tuple(L"DMRES_HIGH_HIGH", L"DMRES_HIGH_HIGH", false)}) {
        resolution.name = before;
        EXPECT_EQ(resolution.set(data, &screen), changes);
        EXPECT_EQ(resolution.name, after);
        EXPECT_EQ(resolution.physResolutionX, screen.GetPPI().x);
    }
}

TEST_F(BridgeNodesTest, ResolutionsGoIntoPrintData) {
    const std::tuple<const wchar_t*, double, double, int, int> cases[] = {
        {L"dmres_low_x", 300, 300, wxPRINT_QUALITY_LOW, 111},
        {L"DMRES_HIGHER", 300, 300, wxPRINT_QUALITY_HIGH, 111},
        {L"DMRES_MEDIU", 299.9, 150.9, 299, 150},
        {L"", 0, 300, 42, 300},
        {L"", 300, 0, 300, 111},
        {L"", 1e300, -1e300, 2147483647, 0},
    };
    for (const auto& [name, x, y, quality, yResolution] : cases) {
        wut::PrintData data(L"Fake");
        data.SetQuality(42);
        auto* native = wut::WindowsPrintNativeData::GetNativeData(data);
        native->yResolution = 111;
        Resolution resolution;
        resolution.name = name;
        resolution.physResolutionX = x;
        resolution.physResolutionY = y;
        resolution.get(data);
        EXPECT_EQ(data.GetQuality(), quality);
        EXPECT_EQ(native->yResolution, yResolution);
    }
}

TEST_F(BridgeNodesTest, BoundsComeFromThePage) {
    CMediaNode media;
    // 254 dots per inch are 0.1 mm a dot across; down a dot is 0.2 mm.
    EXPECT_TRUE(print_bridge::setBounds(media, {254, 127}, {-50, -20, 2100, 1485}));
    const auto& description = media.size.mediaDescription;
    EXPECT_NEAR(description.mediaBounds.urx, 210, 1e-9);
    EXPECT_NEAR(description.mediaBounds.ury, 297, 1e-9);
    EXPECT_NEAR(media.actualPrintableBoundsLlx, 5, 1e-9);
    EXPECT_NEAR(media.actualPrintableBoundsLly, 4, 1e-9);
    EXPECT_NEAR(description.printableBoundsUrx, 200, 1e-9);
    EXPECT_NEAR(description.printableBoundsUry, 289, 1e-9);
    // The area alone is no change.
    media.size.mediaDescription.printableArea = 1;
    EXPECT_FALSE(print_bridge::setBounds(media, {254, 127}, {-50, -20, 2100, 1485}));
    EXPECT_NEAR(description.printableArea, 195.0 * 285, 1e-6);
    // A context without a page says nothing.
    EXPECT_FALSE(print_bridge::setBounds(media, {0, 127}, {0, 0, 100, 100}));
    EXPECT_FALSE(print_bridge::setBounds(media, {254, -1}, {0, 0, 100, 100}));
    EXPECT_FALSE(print_bridge::setBounds(media, {254, 127}, {0, 0, 0, 100}));
    EXPECT_FALSE(media.setBounds(nullptr));
    // Unnamed, it would be the default printer's where there is one.
    wxPrintData nobodys;
    nobodys.SetPrinterName("platen-no-such-printer");
    const wxPrinterDC none(nobodys);
    EXPECT_FALSE(media.setBounds(&none));
    EXPECT_NEAR(description.mediaBounds.urx, 210, 1e-9);
}

TEST(BridgeHexTest, BytesAreReadLeniently) {
    for (const auto& [text, bytes] : {std::pair(L"00FF7f", L"00FF7F"),
                                      {L"aG-1", L"A001"},
                                      {L"123", L"12"},
                                      {L"", L""},
                                      {L"\x0661\x0662", L"00"}}) {
        EXPECT_EQ(wut::hexText(wut::hexBytes(text)), bytes);
    }
}

}  // namespace
