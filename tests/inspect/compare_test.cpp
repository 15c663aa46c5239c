#include <platen/compare.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <memory>
#include <string>
#include <vector>

#include <platen/edit.h>
#include <platen/utcore.h>
#include "tests/support/configurations.h"
#include "tests/support/json_seen.h"
#include "tests/support/random_documents.h"
#include "tests/support/trees.h"

namespace {

using platen::ChangeFate;
using platen::Comparison;
using platen::Difference;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> linesBetween(const PiaBlock& before, const PiaBlock& after) {
    return platen::describe(platen::compare(before, after));
}

constexpr std::uint32_t seeds = 12;

/// Calls `check(random, kind)` with many seeds for each kind of document.
template <class Check>
void forRandomDocuments(Check check) {
    for (const RandomKind kind : randomKinds) {
        for (std::uint32_t seed = 1; seed <= seeds; ++seed) {
            SCOPED_TRACE("kind " + std::to_string(static_cast<int>(kind)) + ", seed " +
                         std::to_string(seed));
            RandomDocuments random(seed);
            check(random, kind);
            if (testing::Test::HasFailure()) {
                return;
            }
        }
    }
}

/// Through the text that people keep.
std::vector<Difference> throughJson(const Comparison& comparison) {
    platen::ChangeList changes;
    const std::string json = keepJson(platen::diffJson({"a"}, {"b"}, comparison));
    EXPECT_NE(json.find("{\"file\":\"b\""), std::string::npos);
    const platen::EditResult read = platen::readChanges(json, changes);
    EXPECT_TRUE(read) << read->reason;
    EXPECT_EQ(changes.changes.size(), comparison.differences.size());
    return std::move(changes.changes);
}

void expectMade(PiaBlock& root, const std::vector<Difference>& changes) {
    const platen::ApplyResult applied = platen::applyChanges(root, changes);
    EXPECT_THAT(platen::describeMisfits(changes, applied), IsEmpty());
    EXPECT_EQ(applied.made + applied.alreadyThere, changes.size());
}

/// Whether a library reads the tree as a document.
std::string faultOf(const PiaBlock& root) {
    PiaInput input;
    if (!input.openBody(piaBodyText(root))) {
        return input.report().failure()->describe();
    }
    return platen::documentState(input).fault;
}

TEST(CompareRandom, ADocumentEqualsItselfHoweverItIsSpelled) {
    forRandomDocuments([](RandomDocuments& random, RandomKind kind) {
        const std::unique_ptr<PiaBlock> one = random.make(kind);
        EXPECT_EQ(faultOf(*one), "");
        EXPECT_THAT(linesBetween(*one, *one), IsEmpty());
        const std::unique_ptr<PiaBlock> other = copyOfTree(*one);
        random.respell(*other);
        EXPECT_THAT(linesBetween(*one, *other), IsEmpty());
        EXPECT_THAT(linesBetween(*other, *one), IsEmpty());
    });
}

TEST(CompareRandom, AppliedDifferencesMakeTheOtherDocument) {
    forRandomDocuments([](RandomDocuments& random, RandomKind kind) {
        const std::unique_ptr<PiaBlock> one = random.make(kind);
        const std::unique_ptr<PiaBlock> changed = copyOfTree(*one);
        random.change(*changed, L"new_");
        const std::unique_ptr<PiaBlock> unlike = random.make(kind);
        const std::unique_ptr<PiaBlock> byColor = random.make(RandomKind::Ctb);
        for (const PiaBlock* other : {changed.get(), unlike.get(), byColor.get()}) {
            if (other == byColor.get() && kind == RandomKind::StbWithIndex) {
                // Colours that share a style cannot get different ones.
                continue;
            }
            const std::unique_ptr<PiaBlock> target = copyOfTree(*one);
            expectMade(*target, throughJson(platen::compare(*target, *other)));
            EXPECT_THAT(linesBetween(*target, *other), IsEmpty());
            EXPECT_EQ(faultOf(*target), "");
        }
    });
}

/// Where an item stands decides whose it is.
bool isOurs(std::wstring_view path) {
    std::size_t sum = 0;
    for (const wchar_t character : path) {
        sum = sum * 31 + static_cast<std::size_t>(character);
    }
    return sum % 2 == 0;
}

TEST(MergeRandom, DisjointChangesAreBothThere) {
    forRandomDocuments([](RandomDocuments& random, RandomKind kind) {
        const std::unique_ptr<PiaBlock> base = random.make(kind);
        const std::unique_ptr<PiaBlock> ours = copyOfTree(*base);
        random.change(*ours, L"ours_", isOurs);
        const std::unique_ptr<PiaBlock> theirs = copyOfTree(*base);
        random.change(*theirs, L"theirs_", [](std::wstring_view path) { return !isOurs(path); });
        const std::unique_ptr<PiaBlock> merged = copyOfTree(*ours);
        const platen::MergeResult result = platen::merge(*base, *merged, *theirs);
        EXPECT_THAT(platen::describe(result.conflicts), IsEmpty());
        for (const PiaBlock* side : {ours.get(), theirs.get()}) {
            const std::vector<Difference> changes = platen::compare(*base, *side).differences;
            const std::unique_ptr<PiaBlock> again = copyOfTree(*merged);
            const platen::ApplyResult applied = platen::applyChanges(*again, changes);
            EXPECT_EQ(applied.alreadyThere, changes.size());
        }
        EXPECT_EQ(faultOf(*merged), "");
    });
}

/// The tree of a body.
std::unique_ptr<PiaBlock> treeOf(const std::string& body) {
    PiaInput input;
    EXPECT_TRUE(input.openBody(body)) << input.report().failure()->describe();
    return copyOfTree(*input.root());
}

std::string tableBody(bool colors) {
    const std::unique_ptr<CPlotStyleTable> table(CPlotStyleTable::create(colors, L""));
    return bodyOfDocument(*table);
}

/// Changes items of the tree by their paths.
std::unique_ptr<PiaBlock> with(const PiaBlock& root, const std::vector<std::wstring>& assignments) {
    std::unique_ptr<PiaBlock> changed = copyOfTree(root);
    platen::ItemEditor editor(*changed);
    for (const std::wstring& assignment : assignments) {
        EXPECT_TRUE(editor.assign(assignment)) << ut::encodeUtf8(assignment);
    }
    return changed;
}

TEST(Compare, SaysWhatConfigurationsAndParametersMean) {
    const std::string withOthers = edited(fullConfiguration, " destination{\n",
                                          " others{\n  0{\n   name=\"A\n  }\n }\n destination{\n");
    const struct {
        const std::string& body;
        const char* from;
        const char* to;
        std::vector<std::string> lines;
    } cases[] = {
        {fullConfiguration, "number_of_copies=3", "number_of_copies=+3.00", {}},
        {fullConfiguration, "number_of_copies=3", "number_of_copies=30e-1", {}},
        {fullConfiguration,
         "number_of_copies=3",
         "number_of_copies=3a",
         {"media/number_of_copies: 3 -> 3a"}},
        {fullConfiguration,
         "number_of_copies=3",
         "number_of_copies=-3",
         {"media/number_of_copies: 3 -> -3"}},
        // Digits that no double has.
        {fullConfiguration,
         "number_of_copies=3",
         "number_of_copies=+3.00000000000000000001",
         {"media/number_of_copies: 3 -> +3.00000000000000000001"}},
        {fullParameters, " dm_driver_version=1025\n", "", {"meta/dm_driver_version: 1025 -> 0"}},
        {fullConfiguration,
         " 5{\n  name=\"PdfExport\n  value=FALSE\n }\n",
         "",
         {"Custom property \"PdfExport\": removed: FALSE"}},
        {withOthers, "   name=\"A", "   name=\"B", {"media/others/0/name: \"A\" -> \"B\""}},
        {fullConfiguration, " ism_max=0\n", "", {"res_color_mem/ism_max: 0 -> 6"}},
        {fullConfiguration, " type=\"roll", " type_name=\"roll", {}},
        {fullConfiguration,
         " type=\"roll",
         " type_name=\"sheet",
         {"media/type: \"roll\" -> \"sheet\""}},
        {fullConfiguration, " dm_driver_version=1025\n", "", {"meta/dm_driver_version: 1025 -> 0"}},
        {fullConfiguration,
         " config_autospool=TRUE\n",
         "",
         {"meta/config_autospool: removed TRUE"}},
        {fullConfiguration,
         "  name=\"dmSize\n  value=220",
         "  name=\"dmSize\n  value=221",
         {"Custom property \"dmSize\": 220 -> 221"}},
        {fullConfiguration, "\\00FFaB\\", "\\00ffAB\\", {}},
        {fullConfiguration,
         "width=36.000000",
         "width=37",
         {"Paper \"Roll\" (media/custom_papers): width 36.000000 -> 37"}},
        {fullConfiguration,
         " destination{\n",
         " vendor{\n }\n destination{\n",
         {"media/vendor: added 0 items"}},
        {fullConfiguration,
         "local_name=\"Rolle",
         "local_name=\"Rolle\x1B[2J",
         {"Paper \"Roll\" (media/custom_papers): local_name \"Rolle\" -> \"Rolle\\x1B[2J\""}},
    };
    for (const auto& [body, from, to, lines] : cases) {
        const auto before = treeOf(body);
        EXPECT_EQ(linesBetween(*before, *treeOf(edited(body, from, to))), lines) << to;
    }
    // Letters of digits, and of what is none.
    const auto full = treeOf(fullConfiguration);
    EXPECT_THAT(linesBetween(*full, *with(*full, {L"custom/2/value:bin=00ffab"})), IsEmpty());
    const auto lower = treeOf(edited(fullConfiguration, "\\00FFaB\\", "\\00gF\\"));
    const auto upper = treeOf(edited(fullConfiguration, "\\00FFaB\\", "\\00GF\\"));
    EXPECT_EQ(linesBetween(*lower, *upper).size(), 1U);
    EXPECT_EQ(linesBetween(*upper, *lower).size(), 1U);
    // Only a style has a line weight.
    const auto more = treeOf(fullConfiguration + "x{\nlineweight=1\n}\n");
    EXPECT_EQ(platen::compare(*full, *more).differences.at(0).millimetresAfter, std::nullopt);
}

TEST(Compare, GathersStyles) {
    const auto colors = treeOf(tableBody(true));
    std::vector<std::wstring> assignments{
        L"plot_style/6/color=-1023410171", L"plot_style/6/color_policy=7",
        L"plot_style/7/mode_color:num=-1040121856", L"plot_style/8/adaptive_linetype=FALSE"};
    for (const int place : {0, 1, 2, 249, 254}) {
        const std::wstring style = L"plot_style/" + std::to_wstring(place);
        assignments.insert(assignments.end(), {style + L"/lineweight=10", style + L"/screen=50"});
    }
    EXPECT_THAT(linesBetween(*colors, *with(*colors, assignments)),
                ElementsAre("Color 1-3, 250, 255: screening 100 % -> 50 %, "
                            "lineweight 0 mm -> 0.35 mm",
                            "Color 7: color object -> index 5, color policy dithered -> "
                            "dithered, grayscale",
                            "Color 8: mode color object -> #010000",
                            "Color 9: adaptive linetype on -> off"));
    const auto assigned = with(*colors, assignments);
    EXPECT_THAT(linesBetween(*assigned, *with(*assigned, {L"plot_style/7/screen=7"})),
                ElementsAre("Color 8: screening 100 % -> 7 %"));
    EXPECT_THAT(
        linesBetween(*colors, *with(*colors, {L"plot_style/0/name=Red", L"aci_table/0=Red"})),
        ElementsAre("Color 1: name \"Color_1\" -> \"Red\""));
    const auto renamed = with(*colors, {L"plot_style/0/name=Red", L"aci_table/0=Red"});
    const auto target = copyOfTree(*colors);
    expectMade(*target, platen::compare(*colors, *renamed).differences);
    EXPECT_TRUE(equalTrees(*target, *renamed));

    const auto named = treeOf(tableBody(false));
    const auto more = copyOfTree(*named);
    CPlotStyle style;
    style.updateName(L"Wall \x1B");
    ASSERT_TRUE(style.write(
        static_cast<PiaBlock&>(*more->findItem(L"plot_style", PiaItemType::Block)), 1, false));
    EXPECT_THAT(linesBetween(*named, *more), ElementsAre("Style \"Wall_\\x1B\": added"));
    EXPECT_EQ(platen::compare(*named, *more).differences.at(0).millimetresAfter, 0.0);
    EXPECT_THAT(linesBetween(*named, *with(*named, {L"custom_lineweight_table/8=0.27",
                                                    L"plot_style/0/lineweight=8"})),
                ElementsAre("Style \"Normal\": lineweight 0 mm -> 0.27 mm",
                            "Lineweight 8: 0.250000 mm -> 0.27 mm"));
    EXPECT_TRUE(std::ranges::is_permutation(
        linesBetween(*named, *with(*named, {L"plot_style/0/lineweight=27"})),
        std::vector<std::string>{"Style \"Normal\": lineweight 0 mm -> 27"}));

    const std::unique_ptr<CPlotStyleTable> many(CPlotStyleTable::create(false, L""));
    PiaBlock before{L""};
    PiaBlock after{L""};
    for (std::size_t number = 1; number <= 14; ++number) {
        ASSERT_TRUE(many->addStyle((L"S" + std::to_wstring(number)).c_str(), -1, nullptr));
    }
    ASSERT_TRUE(many->writeToBlock(before));
    for (std::size_t number = 1; number <= 14; ++number) {
        many->style(number)->setScreen(50);
    }
    ASSERT_TRUE(many->writeToBlock(after));
    EXPECT_THAT(linesBetween(before, after),
                ElementsAre(testing::EndsWith("\"S12\" and 2 more: screening 100 % -> 50 %")));
}

TEST(Compare, TakesColorTablesAndNamedOnesByWhatColorsGet) {
    std::unique_ptr<CPlotStyleTable> table(CPlotStyleTable::create(true, L"Office"));
    table->style(3)->setScreen(40);
    PiaBlock colors{L""};
    PiaBlock named{L""};
    const std::unique_ptr<CPlotStyleTable> converted(ctb2stb(*table, nullptr));
    ASSERT_TRUE(table->writeToBlock(colors) && converted->writeToBlock(named));
    EXPECT_THAT(linesBetween(colors, named), IsEmpty());
    // The list of colours says what the styles do, and the usual line weights go without saying.
    const auto shorter = copyOfTree(colors);
    ASSERT_TRUE(platen::ItemEditor(*shorter).remove(L"aci_table"));
    ASSERT_TRUE(platen::ItemEditor(*shorter).remove(L"custom_lineweight_table"));
    EXPECT_THAT(linesBetween(colors, *shorter), IsEmpty());
    EXPECT_THAT(linesBetween(*shorter, *with(*shorter, {L"plot_style/0/lineweight=10"})),
                ElementsAre("Color 1: lineweight 0 mm -> 0.35 mm"));
    const auto changed = with(colors, {L"plot_style/8/screen=40", L"plot_style/3/screen=20"});
    const Comparison comparison = platen::compare(named, *changed);
    EXPECT_TRUE(comparison.throughColors);
    EXPECT_THAT(platen::describe(comparison),
                ElementsAre("Color 4: screening 40 % -> 20 %", "Color 9: screening 100 % -> 40 %"));
    // The style of colour 4 is its own, that of colour 9 is not.
    const platen::ApplyResult applied = platen::applyChanges(named, comparison.differences);
    EXPECT_EQ(applied.made, 1U);
    EXPECT_THAT(platen::describeMisfits(comparison.differences, applied),
                ElementsAre("Color 9: screening 100 % -> 40 %: the style is also that of color "
                            "1-3, 5-8, 10-255, which would change, too"));
}

TEST(Apply, FitsOrSaysWhyNot) {
    const std::shared_ptr<const PiaBlock> colors = treeOf(tableBody(true));
    const std::shared_ptr<const PiaBlock> named = treeOf(tableBody(false));
    const std::shared_ptr<const PiaBlock> thicker = with(*colors, {L"plot_style/6/lineweight=10"});
    const std::shared_ptr<const PiaBlock> other =
        with(*colors, {L"custom_lineweight_table/10=0.4", L"custom_lineweight_table/26=0.35"});
    const std::shared_ptr<const PiaBlock> without =
        with(*colors, {L"custom_lineweight_table/10=0.4"});
    const struct {
        std::shared_ptr<const PiaBlock> before;
        std::shared_ptr<const PiaBlock> after;
        std::shared_ptr<const PiaBlock> target;
        std::vector<std::string> misfits;
        const wchar_t* path;
        const wchar_t* value;
    } cases[] = {
        // A line weight is known by its millimetres.
        {colors, thicker, other, {}, L"plot_style/6/lineweight", L"26"},
        {colors,
         thicker,
         without,
         {"Color 7: lineweight 0 mm -> 0.35 mm: the table's list has no lineweight of 0.35 mm"},
         L"plot_style/6/lineweight",
         L"0"},
        {colors,
         with(*colors, {L"plot_style/6/lineweight=0.5"}),
         colors,
         {},
         L"plot_style/6/lineweight",
         L"0.5"},
        {colors,
         thicker,
         with(*colors, {L"plot_style/6/lineweight=9"}),
         {"Color 7: lineweight 0 mm -> 0.35 mm: it is 0.3 mm, not 0 mm"},
         L"plot_style/6/lineweight",
         L"9"},
        {colors,
         thicker,
         named,
         {"Color 7: lineweight 0 mm -> 0.35 mm: the table does not say which styles colors have"},
         L"plot_style/0/lineweight",
         L"0"},
        {named,
         with(*named, {L"plot_style/0/screen=7"}),
         colors,
         {"Style \"Normal\": screening 100 % -> 7 %: there is no plot_style/\"Normal\""},
         L"plot_style/0/screen",
         L"100"},
        // The colour that a mode colour stood for stays.
        {colors,
         with(*colors, {L"plot_style/6/color=7", L"plot_style/6/mode_color:num=-1"}),
         colors,
         {},
         L"plot_style/6/mode_color",
         L"-1"},
    };
    for (const auto& [before, after, target, misfits, path, value] : cases) {
        const std::vector<Difference> changes = throughJson(platen::compare(*before, *after));
        const auto result = copyOfTree(*target);
        const platen::ApplyResult applied = platen::applyChanges(*result, changes);
        EXPECT_EQ(platen::describeMisfits(changes, applied), misfits);
        const auto found = piaFindItems(*result, path);
        ASSERT_EQ(found.size(), 1U);
        EXPECT_EQ(static_cast<const PiaNum*>(found[0])->value.str(), value);
    }
}

TEST(Apply, ColorsThatFollowTheStylesKeepThem) {
    const auto named = treeOf(tableBody(false));
    std::unique_ptr<CPlotStyleTable> table(CPlotStyleTable::create(false, L""));
    ASSERT_TRUE(table->addStyle(L"Wall", -1, nullptr));
    PiaBlock more{L""};
    ASSERT_TRUE(table->writeToBlock(more));
    const auto colors = treeOf(tableBody(true));
    ASSERT_TRUE(platen::ItemEditor(*colors).remove(L"aci_table"));
    expectMade(*colors, platen::compare(*named, more).differences);
    // One more style than colours would say nothing of theirs.
    EXPECT_NE(colors->findItem(L"aci_table", PiaItemType::Block), nullptr);
}

TEST(Apply, StylesThatColorsHaveStay) {
    std::unique_ptr<CPlotStyleTable> table(CPlotStyleTable::create(false, L""));
    ASSERT_TRUE(table->addStyle(L"Wall", -1, nullptr));
    ASSERT_TRUE(table->addStyle(L"Door", -1, nullptr));
    PiaBlock all{L""};
    ASSERT_TRUE(table->writeToBlock(all));
    table->deleteStyle(1);
    PiaBlock fewer{L""};
    ASSERT_TRUE(table->writeToBlock(fewer));
    const std::vector<Difference> changes = platen::compare(all, fewer).differences;
    // Behind a style that goes, numbers move up.
    const auto plain = copyOfTree(all);
    expectMade(*plain, changes);
    EXPECT_EQ(faultOf(*plain), "");

    std::array<int, CAciTable::count> entries{};
    entries[4] = 1;
    table->addStyle(L"Wall", -1, nullptr);
    table->renameStyle(1, L"Wall two");
    std::unique_ptr<CPlotStyleTable> indexed(CPlotStyleTable::create(false, L""));
    ASSERT_TRUE(indexed->addStyle(L"Wall", -1, nullptr));
    indexed->addACI(entries.data());
    PiaBlock root{L""};
    ASSERT_TRUE(indexed->writeToBlock(root));
    const platen::ApplyResult applied = platen::applyChanges(root, changes);
    EXPECT_THAT(platen::describeMisfits(changes, applied),
                ElementsAre("Style \"Wall\": removed: the style is that of color 5"));
    EXPECT_EQ(faultOf(root), "");
    // A colour gets no style that is not there.
    const std::vector<Difference> colored =
        platen::compare(root, *with(root, {L"aci_table/7=Wall"})).differences;
    const auto without = with(root, {L"plot_style/1/name=Gone"});
    EXPECT_THAT(platen::describeMisfits(colored, platen::applyChanges(*without, colored)),
                ElementsAre(testing::EndsWith("there is no style \"Wall\"")));
}

TEST(Apply, AChangeThatContradictsItselfIsNone) {
    const auto config = treeOf(fullConfiguration);
    std::vector<Difference> changes =
        platen::compare(*config, *with(*config, {L"media/number_of_copies=4"})).differences;
    ASSERT_EQ(changes.size(), 1U);
    for (const auto change : {Difference::Change::Added, Difference::Change::Removed}) {
        changes[0].change = change;
        EXPECT_EQ(platen::applyChanges(*config, changes).misfits, 1U);
    }
}

TEST(Compare, AFileThatIsOneSidedSaysSo) {
    EXPECT_EQ(keepJson(platen::fileChangeJson("a", "")),
              R"({"schema":"platen.diff-file/1","change":"removed","before":"a","after":null})");
    EXPECT_EQ(keepJson(platen::fileChangeJson("", "b")),
              R"({"schema":"platen.diff-file/1","change":"added","before":null,"after":"b"})");
    const Comparison version{.container = {{.before = "2", .after = "3"}}};
    EXPECT_THAT(keepJson(platen::diffJson({"a"}, {"b"}, version)),
                testing::HasSubstr(R"([{"what":"version","before":"2","after":"3"}])"));
}

TEST(Merge, ConflictsKeepOurs) {
    const auto base = treeOf(tableBody(true));
    const auto theirs = with(*base, {L"plot_style/0/screen=10", L"plot_style/1/screen=20",
                                     L"plot_style/2/screen=30", L"description=Theirs"});
    const auto ours = with(*base, {L"plot_style/0/screen=11", L"plot_style/1/screen=20"});
    const platen::MergeResult merged = platen::merge(*base, *ours, *theirs);
    EXPECT_EQ(merged.taken, 2U);
    EXPECT_THAT(platen::describe(merged.conflicts),
                ElementsAre("Color 1: screening 100 % -> 10 %: it is 11 %, not 100 %"));
    ASSERT_NE(merged.conflicts[0].ours, nullptr);
    EXPECT_THAT(linesBetween(*ours, *theirs), ElementsAre("Color 1: screening 11 % -> 10 %"));

    // Both have added the file.
    const auto config = treeOf(fullConfiguration);
    const auto added = treeOf(edited(edited(fullConfiguration, "copies=3", "copies=4"),
                                     " destination{", " vendor=1\n destination{"));
    const platen::MergeResult joined = platen::merge(PiaBlock(L""), *config, *added);
    EXPECT_EQ(joined.taken, 1U);
    EXPECT_THAT(platen::describe(joined.conflicts),
                ElementsAre("media/number_of_copies: 3 -> 4: both have added the file"));
}

TEST(ReadChanges, WhateverAFileHoldsIsRead) {
    const auto before = treeOf("n=1\nb=\\00\\\n");
    const auto after = treeOf("n=196.000  000\nb=\\a word\\\nt=\"a\rb\nu=5 mm, \xC3\xA9\n");
    const auto made = copyOfTree(*before);
    expectMade(*made, throughJson(platen::compare(*before, *after)));
    EXPECT_EQ(piaBodyText(*made), piaBodyText(*after));
}

TEST(ReadChanges, TextsOfAnyKindAreSafe) {
    const auto colors = treeOf(tableBody(true));
    const auto config = treeOf(fullConfiguration);
    std::vector<std::string> sound{
        platen::diffJson({"a"}, {"b"},
                         platen::compare(*colors, *with(*colors, {L"plot_style/6/lineweight=10",
                                                                  L"vendor:num=1"}))),
        platen::diffJson({"a"}, {"b"}, platen::compare(PiaBlock(L""), *config))};
    const auto around = [](const std::string& change) {
        return R"({"schema":"platen.diff/1","differences":[)" + change + "]}";
    };
    const std::string cases[] = {
        "",
        "{}",
        "[]",
        "null",
        "{\"schema\":\"platen.diff/1\"}",
        std::string(100000, '['),
        around("1"),
        around("{}"),
        around(R"({"change":"added","place":[],"type":"num","after":"1"})"),
        around(R"({"change":"added","place":["a"],"type":"num","after":1})"),
        around(R"({"change":"added","place":["a"],"type":"num","after":"\"1"})"),
        around(R"({"change":"added","place":["a"],"type":"num","after":"True"})"),
        around(R"({"change":"added","place":["a"],"type":"bin","after":"0\\"})"),
        around(R"({"change":"added","place":["a"],"type":"str","after":"1\n}"})"),
        around(R"({"change":"added","place":["a"],"type":"bool","after":"TRUE"})"),
        around(R"({"change":"added","place":[""],"type":"str","after":""})"),
        around(R"({"change":"removed","place":["a"],"type":"num"})"),
        around(
            R"({"change":"changed","place":["a",{"color":0},"b"],"type":"num","before":"1","after":"2"})"),
        around(
            R"({"change":"changed","place":["a",{"color":256},"b"],"type":"num","before":"1","after":"2"})"),
        around(
            R"({"change":"removed","place":["plot_style",{"color":1}],"type":"block","before":[]})"),
        around(
            R"({"change":"added","place":["a",{"entry":"b","turn":-1}],"type":"block","after":[]})"),
        around(
            R"({"change":"added","place":["a"],"type":"block","after":[{"name":"a","type":"num","value":"1"},{"name":"a","type":"num","value":"2"}]})"),
    };
    platen::ChangeList read;
    for (const std::string& text : cases) {
        const platen::EditResult result = platen::readChanges(text, read);
        ASSERT_FALSE(result) << text.substr(0, 200);
        EXPECT_EQ(result->fault, platen::EditFault::ValueInvalid);
    }
    // Whatever is understood may be applied to anything.
    RandomDocuments random(1);
    for (int round = 0; round < 400; ++round) {
        std::string text = sound[random.below(sound.size())];
        for (std::size_t count = 1 + random.below(3); count > 0; --count) {
            const std::size_t at = random.below(text.size());
            const std::size_t from = random.below(text.size());
            if (random.oneIn(2)) {
                text[at] = static_cast<char>(random.below(128));
            } else {
                text.replace(at, random.below(20), text.substr(from, random.below(20)));
            }
        }
        if (platen::readChanges(text, read)) {
            const auto target = copyOfTree(random.oneIn(2) ? *colors : *config);
            static_cast<void>(platen::applyChanges(*target, read.changes));
        }
    }
}

}  // namespace
