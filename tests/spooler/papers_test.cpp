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

}  // namespace
