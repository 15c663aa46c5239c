#include <gtest/gtest.h>
#include <wx/init.h>
#include <wx/paper.h>

#include <string>
#include <utility>
#include <vector>

#include <platen/print.h>
#include "tests/support/fake_spooler.h"

namespace {

class PrintDataTerms : public testing::Test {
protected:
    PrintDataTerms() { wut::registerPrintFactory(); }
    ~PrintDataTerms() override { wut::unRegisterPrintFactory(); }

    wxInitializer library_;
};

TEST_F(PrintDataTerms, BinsAreMappedBothWays) {
    struct Case {
        short set;
        int wx;
        short get;
    };
    const Case cases[] = {{1, 1, 1},      {7, 7, 7},      {11, 11, 11},         {12, 0, 242},
                          {13, 0, 242},   {14, 12, 14},   {15, 13, 15},         {16, 0, 242},
                          {255, 0, 242},  {0, 0, 242},    {-1, 0, 242},         {242, 0, 242},
                          {256, 14, 256}, {260, 18, 260}, {32767, 32525, 32767}};
    for (const Case& one : cases) {
        wut::PrintData data;
        data.setDmBin(one.set);
        EXPECT_EQ(data.GetBin(), one.wx) << one.set;
        EXPECT_EQ(data.getDmBin(), one.get) << one.set;
    }
}

TEST_F(PrintDataTerms, DuplexAndQualityAreMappedBothWays) {
    wut::PrintData data;
    const std::vector<std::pair<short, wxDuplexMode>> duplexes = {
        {DMDUP_SIMPLEX, wxDUPLEX_SIMPLEX},
        {DMDUP_VERTICAL, wxDUPLEX_VERTICAL},
        {DMDUP_HORIZONTAL, wxDUPLEX_HORIZONTAL}};
    for (const auto& [windows, wx] : duplexes) {
        data.setDmDuplex(windows);
        EXPECT_EQ(data.GetDuplex(), wx);
        EXPECT_EQ(data.getDmDuplex(), windows);
    }
    data.setDmDuplex(4);
    EXPECT_EQ(data.getDmDuplex(), DMDUP_SIMPLEX);

    const std::vector<std::pair<short, int>> qualities = {{DMRES_HIGH, wxPRINT_QUALITY_HIGH},
                                                          {DMRES_MEDIUM, wxPRINT_QUALITY_MEDIUM},
                                                          {DMRES_LOW, wxPRINT_QUALITY_LOW},
                                                          {DMRES_DRAFT, wxPRINT_QUALITY_DRAFT},
                                                          {600, 600},
                                                          {0, 0},
                                                          {-5, -5},
                                                          {32767, 32767}};
    for (const auto& [windows, wx] : qualities) {
        data.setDmQuality(windows);
        EXPECT_EQ(data.GetQuality(), wx) << windows;
        EXPECT_EQ(data.getDmQuality(), windows);
    }
    data.SetQuality(0x10258);
    EXPECT_EQ(data.getDmQuality(), 600);
}

TEST_F(PrintDataTerms, PapersThatWxWidgetsKnowsBringTheirSize) {
    wut::PrintData data;
    short id = -7;
    EXPECT_FALSE(data.getDmPaperSize(id));
    EXPECT_EQ(id, -7);

    const wxSize size(111, 222);
    data.setDmPaperSize(300, &size);
    EXPECT_EQ(data.GetPaperId(), wxPAPER_NONE);
    EXPECT_EQ(data.GetPaperSize(), size);
    ASSERT_TRUE(data.getDmPaperSize(id));
    EXPECT_EQ(id, 300);

    data.setDmPaperSize(DMPAPER_A4, &size);
    EXPECT_EQ(data.GetPaperId(), wxPAPER_A4);
    EXPECT_EQ(data.GetPaperSize(), wxSize(210, 297));
    EXPECT_EQ(wut::WindowsPrintNativeData::GetNativeData(data)->customWindowsPaperId, 0);
    ASSERT_TRUE(data.getDmPaperSize(id));
    EXPECT_EQ(id, DMPAPER_A4);
    // 215.9 by 279.4 mm: cut, not rounded.
    data.setDmPaperSize(DMPAPER_LETTER, nullptr);
    EXPECT_EQ(data.GetPaperSize(), wxSize(215, 279));
}

TEST_F(PrintDataTerms, OtherPapersKeepTheirNumber) {
    wut::PrintData data;
    short id = 0;
    const POINT letter = {2159, 2794};
    data.setDmPaperSize(DMPAPER_USER, &letter);
    EXPECT_EQ(data.GetPaperSize(), wxSize(216, 279));
    EXPECT_TRUE(data.getDmPaperSize(id));
    EXPECT_EQ(id, DMPAPER_USER);
    const POINT odd = {-6, -5};
    data.setDmPaperSize(400, &odd);
    EXPECT_EQ(data.GetPaperSize(), wxSize(-1, 0));
    data.setDmPaperSize(200, nullptr);
    EXPECT_EQ(data.GetPaperSize(), wxSize(0, 0));
    EXPECT_TRUE(data.getDmPaperSize(id));
    EXPECT_EQ(id, 200);
    // A size alone is a user-defined paper.
    data.setDmPaperSize(0, nullptr);
    EXPECT_TRUE(data.getDmPaperSize(id));
    EXPECT_EQ(id, DMPAPER_USER);
}

TEST_F(PrintDataTerms, CopiesCarryEverything) {
    wut::PrintData data;
    EXPECT_FALSE(data.isMergeColors());
    EXPECT_TRUE(data.isTtfAsText());
    EXPECT_EQ(data.getDriverName(), wxString());
    data.setMergeColors(true);
    data.setTtfAsText(false);
    data.setDriverName("Driver");
    data.SetNoCopies(9);
    const wut::PrintData copy(data);
    wut::PrintData assigned;
    assigned = copy;
    EXPECT_TRUE(assigned.isMergeColors());
    EXPECT_FALSE(assigned.isTtfAsText());
    EXPECT_EQ(assigned.getDriverName(), "Driver");
    EXPECT_EQ(assigned.GetNoCopies(), 9);
    EXPECT_EQ(assigned.GetNativeData(), data.GetNativeData());
    EXPECT_TRUE(data.IsKindOf(wxCLASSINFO(wut::PrintData)));
}

TEST_F(PrintDataTerms, WithoutTheFactoryNothingIsInitialised) {
    wut::unRegisterPrintFactory();
    test_support::FakeSpooler fake;
    fake.add(L"Plotter");
    fake.defaultName = L"Plotter";
    const wut::SpoolerForTest inPlace(fake);
    wut::PrintData data(L"Plotter");
    EXPECT_EQ(wut::WindowsPrintNativeData::GetNativeData(data), nullptr);
    EXPECT_EQ(data.GetPrinterName(), wxString());
    EXPECT_EQ(data.createPrinterDC(), nullptr);
    EXPECT_TRUE(data.ResolveConflicts());
    data.setDmPaperSize(300, nullptr);
    short id = 0;
    EXPECT_TRUE(data.getDmPaperSize(id));
    EXPECT_EQ(id, DMPAPER_USER);
    EXPECT_EQ(fake.calls["documentProperties"], 0);
}

}  // namespace
