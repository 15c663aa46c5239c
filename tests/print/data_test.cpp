#include <gtest/gtest.h>
#include <wx/init.h>
#include <wx/paper.h>

#include <tuple>

#include <platen/print.h>

namespace {

class PrintDataTerms : public testing::Test {
protected:
    PrintDataTerms() { wut::registerPrintFactory(); }
    ~PrintDataTerms() override { wut::unRegisterPrintFactory(); }

    wxInitializer library_;
};

TEST_F(PrintDataTerms, BinsDuplexAndQualityAreMappedBothWays) {
    struct Case {
        short set;
        int wx;
        short get;
    };
    const Case bins[] = {{1, 1, 1},      {11, 11, 11},         {12, 0, 242},  {14, 12, 14},
                         {15, 13, 15},   {16, 0, 242},         {255, 0, 242}, {-1, 0, 242},
                         {256, 14, 256}, {32767, 32525, 32767}};
    const Case duplexes[] = {{1, 0, 1}, {2, 2, 2}, {3, 1, 3}, {4, 0, 1}};
    const Case qualities[] = {{-4, -1, -4}, {-3, -2, -3}, {-2, -3, -2},
                              {-1, -4, -1}, {0, 0, 0},    {-5, -5, -5}};
    wut::PrintData data;
    for (const auto& [set, wx, get] : bins) {
        data.setDmBin(set);
        EXPECT_EQ(data.GetBin(), wx) << set;
        EXPECT_EQ(data.getDmBin(), get) << set;
    }
    for (const auto& [set, wx, get] : duplexes) {
        data.setDmDuplex(set);
        EXPECT_EQ(data.GetDuplex(), wx) << set;
        EXPECT_EQ(data.getDmDuplex(), get) << set;
    }
    for (const auto& [set, wx, get] : qualities) {
        data.setDmQuality(set);
        EXPECT_EQ(data.GetQuality(), wx) << set;
        EXPECT_EQ(data.getDmQuality(), get) << set;
    }
    data.SetQuality(0x10258);
    EXPECT_EQ(data.getDmQuality(), 600);
}

TEST_F(PrintDataTerms, PapersBringTheirSizeOrKeepTheirNumber) {
    wut::PrintData data;
    short id = -7;
    EXPECT_FALSE(data.getDmPaperSize(id));
    EXPECT_EQ(id, -7);
    const std::tuple<short, POINT, wxSize, short> cases[] = {
        {300, {2159, 2794}, {216, 279}, 300},
        {DMPAPER_A4, {1110, 2220}, {210, 297}, DMPAPER_A4},
        // 215.9 by 279.4 mm: cut, not rounded.
        {DMPAPER_LETTER, {0, 0}, {215, 279}, DMPAPER_LETTER},
        {400, {-6, -5}, {-1, 0}, 400},
        // A size alone is a user-defined paper.
        {0, {1000, 2000}, {100, 200}, DMPAPER_USER},
    };
    for (const auto& [set, tenths, size, get] : cases) {
        data.setDmPaperSize(set, &tenths);
        EXPECT_EQ(data.GetPaperSize(), size) << set;
        EXPECT_TRUE(data.getDmPaperSize(id));
        EXPECT_EQ(id, get);
    }
    data.setDmPaperSize(DMPAPER_A4, nullptr);
    EXPECT_EQ(wut::WindowsPrintNativeData::GetNativeData(data)->customWindowsPaperId, 0);
    data.setDmPaperSize(200, nullptr);
    EXPECT_EQ(data.GetPaperSize(), wxSize(0, 0));
}

}  // namespace
