#include "tests/spooler/support.h"

namespace {

using SpoolerDevmodeTest = SpoolerTest;

TEST_F(SpoolerDevmodeTest, SettingsOfANamedPrinterReachItsDeviceModeAndComeBack) {
    const wut::DevModePtr expected(wut::getDevMode(L"Plotter"));
    ASSERT_NE(expected, nullptr);
    // It is not the default printer.
    wut::PrintData data(L"Plotter");
    EXPECT_EQ(data.GetPrinterName(), L"Plotter");
    EXPECT_TRUE(data.isPostScript());
    short paper = 0;
    EXPECT_TRUE(data.getDmPaperSize(paper));
    EXPECT_EQ(paper, expected->dmPaperSize);
    data.setDmPaperSize(DMPAPER_A4, nullptr);
    data.SetOrientation(wxLANDSCAPE);
    data.SetNoCopies(3);
    wut::DEVMODE_RAII mode(data);
    ASSERT_TRUE(mode);
    EXPECT_STREQ(mode->dmDeviceName, L"Plotter");
    EXPECT_EQ(mode->dmDriverExtra, expected->dmDriverExtra);
    EXPECT_EQ(mode->dmPaperSize, DMPAPER_A4);
    EXPECT_EQ(mode->dmOrientation, DMORIENT_LANDSCAPE);
    EXPECT_EQ(mode->dmCopies, 3);
    mode->dmPaperSize = DMPAPER_A3;
    mode->dmFields |= DM_PAPERSIZE;
    mode.updatePrintData();
    EXPECT_TRUE(data.getDmPaperSize(paper));
    EXPECT_EQ(paper, DMPAPER_A3);
    EXPECT_EQ(data.GetPaperSize(), wxSize(297, 420));
    EXPECT_EQ(data.GetOrientation(), wxLANDSCAPE);
    EXPECT_EQ(data.GetNoCopies(), 3);
}

TEST_F(SpoolerDevmodeTest, APaperLongerThanADeviceModeStatesTakesItsSettingsAlong) {
    wut::PrintData data(L"Plotter");
    CPrnHelper printer(L"Plotter");
    const int index = printer.findPaperName(L"A0D - 841x4756mm");
    ASSERT_GE(index, 0);
    const auto id = static_cast<short>(printer.getPaperId(static_cast<unsigned>(index)));
    data.setDmPaperSize(id, nullptr);
    ASSERT_TRUE(data.ResolveConflicts());
    // The queue has it in whole points, and a part of a millimetre is cut.
    const wxSize paperSize(841, 4755);
    EXPECT_EQ(data.GetPaperSize(), paperSize);
    const wxSize longer(841, 4757);
    for (const wxSize* size : {static_cast<const wxSize*>(nullptr), &longer}) {
        if (size != nullptr) {
            data.setDmPaperSize(id, size);
        }
        data.SetNoCopies(data.GetNoCopies() + 2);
        data.SetOrientation(wxLANDSCAPE);
        EXPECT_EQ(wut::DEVMODE_RAII(data)->dmCopies, data.GetNoCopies());
        ASSERT_TRUE(data.ResolveConflicts());
        EXPECT_EQ(data.GetOrientation(), wxLANDSCAPE);
        EXPECT_EQ(data.GetPaperSize(), paperSize);
        short paper = 0;
        EXPECT_TRUE(data.getDmPaperSize(paper));
        EXPECT_EQ(paper, id);
    }
}

}  // namespace
