#include <cstdlib>
#include <set>

#include "tests/spooler/support.h"

namespace {

using SpoolerPapersTest = SpoolerTest;

TEST_F(SpoolerPapersTest, AQueueHasThePapersOfItsDescription) {
    const struct {
        const wchar_t* queue;
        const wchar_t* paper;
        /// Tenths of a millimetre. The queue has them in whole points.
        POINT size;
    } cases[] = {{L"Plotter", L"A4", {2100, 2970}},
                 {L"Plotter", L"A0D - 841x4756mm", {8410, 47560}},
                 {L"Office", L"A3", {2970, 4200}}};
    for (const auto& [queue, paper, size] : cases) {
        OdArray<unsigned short> ids;
        OdArray<OdString> names;
        OdArray<POINT> sizes;
        const OdString port = wut::getPrinterPorts(queue);
        ASSERT_TRUE(wut::PaperSizeGetter(queue, port.c_str(), nullptr).get(&ids, &names, &sizes));
        EXPECT_GT(ids.size(), 10U);
        EXPECT_EQ(names.size(), ids.size());
        ASSERT_EQ(sizes.size(), ids.size());
        EXPECT_EQ(std::set<unsigned short>(ids.begin(), ids.end()).size(), ids.size());
        const int index = CPrnHelper(queue).findPaperName(paper);
        ASSERT_GE(index, 0) << testing::PrintToString(paper);
        EXPECT_LE(std::abs(sizes[static_cast<unsigned>(index)].x - size.x), 10);
        EXPECT_LE(std::abs(sizes[static_cast<unsigned>(index)].y - size.y), 10);
    }
}

TEST_F(SpoolerPapersTest, PapersAreFoundByNameAndId) {
    CPrnHelper printer(L"Plotter");
    const int a4 = printer.findPaperName(L"a4");
    ASSERT_GE(a4, 0);
    EXPECT_EQ(printer.getPaperName(static_cast<unsigned>(a4)), OdString(L"A4"));
    EXPECT_EQ(printer.getPaperId(static_cast<unsigned>(a4)), DMPAPER_A4);
    EXPECT_EQ(printer.findPaperId(DMPAPER_A4), a4);
    // A size that Windows has no number for.
    const int roll = printer.findPaperName(L"A0D - 841x4756mm");
    ASSERT_GE(roll, 0);
    EXPECT_GE(printer.getPaperId(static_cast<unsigned>(roll)), DMPAPER_USER);
    EXPECT_EQ(printer.findPaperName(L"A9"), -1);
    EXPECT_EQ(printer.findPaperId(DMPAPER_ENV_DL), -1);
    EXPECT_EQ(CPrnHelper(L"Office").findPaperName(L"A0D - 841x4756mm"), -1);
    EXPECT_THROW(printer.getPaperName(static_cast<unsigned>(printer.paperCount())),
                 OdError_InvalidIndex);
}

}  // namespace
