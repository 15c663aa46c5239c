#include "tools/platen/arguments/suggest.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

TEST(Suggestions, AreTheNearestNames) {
    const std::vector<std::wstring> names{L"Print As PDF",     L"Print As PNG", L"Long roll",
                                          L"XGA (1024 x 768)", L"A0",           L"\u00C4rea"};
    const auto near = [&](std::wstring_view wanted) {
        return cli::arguments::nearNames(wanted, names);
    };
    EXPECT_THAT(near(L"print as PDF"), ElementsAre(L"Print As PDF"));
    EXPECT_THAT(near(L"prnit as pdf"), ElementsAre(L"Print As PDF"));
    EXPECT_THAT(near(L"Print As PXG"), ElementsAre(L"Print As PNG"));
    EXPECT_THAT(near(L"print as"), ElementsAre(L"Print As PDF", L"Print As PNG"));
    EXPECT_THAT(near(L"lng rol"), ElementsAre(L"Long roll"));
    EXPECT_THAT(near(L"XQA"), ElementsAre(L"XGA (1024 x 768)"));
    EXPECT_THAT(near(L"\u00E4rae"), ElementsAre(L"\u00C4rea"));
    EXPECT_THAT(near(L"A"), ElementsAre(L"A0"));
    EXPECT_THAT(near(L"plotter"), IsEmpty());
    EXPECT_THAT(cli::arguments::nearNames(L"", {}), IsEmpty());
}

// Files may hold any number of names of any length; this must end.
TEST(Suggestions, AreBounded) {
    const std::vector<std::wstring> many(200000, L"the same name again");
    EXPECT_LE(cli::arguments::nearNames(L"the same name agian", many).size(), 5U);
    const std::wstring longest(200000, L'x');
    EXPECT_THAT(cli::arguments::nearNames(longest, {longest}), ElementsAre(longest));
    EXPECT_THAT(cli::arguments::nearNames(std::wstring(200000, L'y'), {longest}), IsEmpty());
}

}  // namespace
