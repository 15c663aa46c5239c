#include <algorithm>
#include <cstddef>
#include <iterator>
#include <set>
#include <string>

#include "tests/spooler/support.h"

namespace {

using SpoolerPapersTest = SpoolerTest;

/// Sizes come as whole points and are cut.
constexpr double tolerance = 5;

TEST_F(SpoolerPapersTest, AQueueHasThePapersOfItsDescription) {
    for (const char* queue : {"Plotter", "Office"}) {
        const std::vector<DescribedPaper> described = describedPapers(queue);
        ASSERT_GT(described.size(), 10U) << queue;
        const std::wstring name(queue, queue + std::char_traits<char>::length(queue));
        const std::wstring port = L"CUPS:" + name;
        OdArray<unsigned short> ids;
        OdArray<OdString> names;
        OdArray<POINT> sizes;
        ASSERT_TRUE(
            wut::PaperSizeGetter(name.c_str(), port.c_str(), nullptr).get(&ids, &names, &sizes));
        ASSERT_EQ(ids.size(), described.size());
        ASSERT_EQ(names.size(), described.size());
        ASSERT_EQ(sizes.size(), described.size());
        EXPECT_EQ(std::set<unsigned short>(ids.begin(), ids.end()).size(), ids.size());
        for (std::size_t index = 0; index < names.size(); ++index) {
            const std::wstring& paper = names[index].text();
            const auto found = std::find_if(
                described.begin(), described.end(),
                [&](const DescribedPaper& candidate) { return candidate.name == paper; });
            ASSERT_NE(found, described.end()) << testing::PrintToString(paper);
            EXPECT_NEAR(sizes[index].x, found->width, tolerance) << testing::PrintToString(paper);
            EXPECT_NEAR(sizes[index].y, found->height, tolerance) << testing::PrintToString(paper);
        }
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
