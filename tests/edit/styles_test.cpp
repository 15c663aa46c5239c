#include <gmock/gmock.h>

#include <algorithm>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include <platen/edit.h>
#include <platen/style_words.h>
#include <platen/utcore.h>
#include "tests/support/random_tables.h"
#include "tests/support/trees.h"

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

using Places = std::vector<std::size_t>;

constexpr std::uint32_t seeds = 40;
constexpr TableShape shapes[] = {TableShape::ByColour, TableShape::Named,
                                 TableShape::NamedWithColours};

/// A table in a file in memory.
class Opened {
public:
    explicit Opened(const std::string& body) {
        ut::ByteBuffer bytes;
        bytes.reserve(body.size());
        std::ranges::copy(body, bytes.data());
        bytes.setSize(body.size());
        EXPECT_TRUE(file_.readBytes(std::move(bytes))) << body;
        const platen::EditResult opened = editor.open();
        EXPECT_TRUE(opened) << opened->reason;
    }

    /// The items as they would be written, as text.
    std::string written() {
        PiaTree tree;
        EXPECT_TRUE(editor.writeTo(tree.root()));
        return piaBodyText(tree.root());
    }
    std::string before() const { return piaBodyText(*file_.input().root()); }

private:
    platen::SourceFile file_;

public:
    platen::TableEditor editor{file_};
};

/// "" when the change was made.
std::string reason(const platen::EditResult& done) { return done ? "" : done->reason; }

TEST(EditStyles, CsvOfAnyTableChangesNothingInIt) {
    for (std::uint32_t seed = 0; seed < seeds; ++seed) {
        for (const TableShape shape : shapes) {
            Opened table(RandomTable(seed, shape, true).body());
            const std::string csv = platen::tableCsv(table.editor.table());
            ASSERT_EQ(reason(table.editor.readCsv(csv)), "");
            ASSERT_EQ(table.written(), table.before()) << seed;
            EXPECT_FALSE(table.editor.changed());
        }
    }
}

TEST(EditStyles, ColoursKeepTheSpellingOfTheirStyles) {
    std::string body = RandomTable(1, TableShape::NamedWithColours, false).body();
    body.replace(body.find(" 7=\"Style_"), 10, " 7=\"sTYLE_");
    Opened table(body);
    ASSERT_EQ(reason(table.editor.readCsv(platen::tableCsv(table.editor.table()))), "");
    EXPECT_EQ(table.written(), table.before());
    EXPECT_FALSE(table.editor.changed());
    const std::string used = body.substr(
        body.find("sTYLE_"), body.find('\n', body.find("sTYLE_")) - body.find("sTYLE_"));
    ASSERT_EQ(reason(table.editor.rename(std::stoul(used.substr(6)), L"Other")), "");
    EXPECT_EQ(table.written().find(used), std::string::npos);
}

TEST(EditStyles, OptionalNumbersThatAreNoneStayUntilTheyAreReplaced) {
    std::string body = RandomTable(0, TableShape::Named, false).body();
    for (const std::string key : {"custom_lineweight_display_units=", "  mode_color="}) {
        const std::size_t at = body.find(key);
        body.replace(at, body.find('\n', at) - at, key + "p");
    }
    Opened table(body);
    ASSERT_EQ(reason(table.editor.readCsv(platen::tableCsv(table.editor.table()))), "");
    EXPECT_EQ(table.written(), table.before());
    EXPECT_FALSE(table.editor.changed());
    ASSERT_EQ(reason(table.editor.set({0}, L"screening=37")), "");
    EXPECT_THAT(table.written(), HasSubstr("display_units=p\n"));
    table.editor.table().setCustomLineweightDisplayUnits(1);
    EXPECT_THAT(table.written(), HasSubstr("display_units=1\n"));
}

TEST(EditStyles, CsvHoldsAllOfATable) {
    for (std::uint32_t seed = 0; seed < seeds; ++seed) {
        for (const TableShape shape : shapes) {
            const Opened table(RandomTable(seed, shape, false).body());
            const std::string csv = platen::tableCsv(table.editor.table());
            // A row has nothing of the one before it.
            EXPECT_NE(csv.find("\ntable,,"), std::string::npos);
            EXPECT_NE(csv.find(" mm,,,,,,,"), std::string::npos);
            const std::unique_ptr<CPlotStyleTable> made(
                CPlotStyleTable::create(shape == TableShape::ByColour, L""));
            PiaBlock root(L"");
            ASSERT_TRUE(made->writeToBlock(root));
            Opened fresh(piaBodyText(root));
            ASSERT_EQ(reason(fresh.editor.readCsv(csv)), "");
            // Written and read again, as `relist` makes another table than a reader.
            const Opened again(fresh.written());
            EXPECT_EQ(platen::tableCsv(again.editor.table()), csv) << seed;
        }
    }
}

TEST(EditStyles, CsvWithFaultsChangesAllOrNothing) {
    std::mt19937 random(1);
    int refused = 0;
    for (std::uint32_t seed = 0; seed < 5 * seeds; ++seed) {
        Opened table(RandomTable(seed, shapes[1 + seed % 2], true).body());
        std::string csv = platen::tableCsv(table.editor.table());
        for (int fault = 0; fault < 3; ++fault) {
            const std::string_view signs = "\",;\n\r\t'=0129.-ax#\xC3";
            csv[random() % csv.size()] = signs[random() % signs.size()];
        }
        if (!table.editor.readCsv(csv)) {
            ++refused;
            ASSERT_EQ(table.written(), table.before()) << csv;
        } else {
            const Opened again(table.written());
            EXPECT_EQ(platen::tableCsv(again.editor.table()),
                      platen::tableCsv(table.editor.table()));
        }
    }
    EXPECT_GT(refused, 20);
}

TEST(EditStyles, AChangeTakenBackLeavesTheFile) {
    const wchar_t* const others[] = {L"dither=off",
                                     L"grayscale=on",
                                     L"color=#123456",
                                     L"color=object",
                                     L"color=index:200",
                                     L"pen=7",
                                     L"virtual_pen=9",
                                     L"screening=12",
                                     L"pattern_size=2.25",
                                     L"linetype=standard",
                                     L"adaptive=on",
                                     L"lineweight=index:26",
                                     L"fill=1",
                                     L"ends=2",
                                     L"joins=3",
                                     L"description=x"};
    for (std::uint32_t seed = 0; seed < seeds; ++seed) {
        Opened table(RandomTable(seed, shapes[seed % 3], true).body());
        CPlotStyleTable& styles = table.editor.table();
        for (std::size_t place = 0; place < std::min<std::size_t>(styles.size(), 9); ++place) {
            for (const std::wstring other : others) {
                const std::wstring word = other.substr(0, other.find(L'='));
                const CPlotStyle before = *styles.style(place);
                const std::string text =
                    settingText(*styles.style(place), *platen::findStyleSetting(word),
                                styles.customLineweights());
                ASSERT_EQ(reason(table.editor.set({place}, other)), "");
                std::wstring old;
                ASSERT_TRUE(ut::decodeUtf8(text, old));
                const CPlotStyle changed = *styles.style(place);
                const std::string refused = reason(table.editor.set({place}, word + L'=' + old));
                if (!refused.empty()) {
                    // What makes no sense cannot be set.
                    ASSERT_THAT(refused, testing::AnyOf(HasSubstr("lineweight cannot"),
                                                        HasSubstr("screening cannot")));
                    EXPECT_TRUE(styles.style(place)->isEqual(changed, true));
                    *styles.style(place) = before;
                }
            }
        }
        EXPECT_EQ(table.written(), table.before()) << seed;
    }
}

const std::string named = [] {
    std::string text =
        "description=\"\naci_table_available=FALSE\nscale_factor=1.0\napply_factor=FALSE\n"
        "plot_style{\n";
    const char* const names[] = {"Normal", "Wall_1", "wall_2", "Door", "7"};
    for (int index = 0; index < 5; ++index) {
        text += ' ' + std::to_string(index) + "{\n  name=\"" + names[index] +
                "\n  localized_name=\"" + names[index] + "\n  vendor=\"v" + std::to_string(index) +
                "\n  description=\"\n  color=-1\n  color_policy=1\n  physical_pen_number=0\n"
                "  virtual_pen_number=0\n  screen=100\n  linepattern_size=0.5\n  linetype=31\n"
                "  adaptive_linetype=TRUE\n  lineweight=" +
                std::to_string(index / 3) +
                "\n  fill_style=73\n  end_style=4\n  join_style=5\n }\n";
    }
    return text + "}\n";
}();

TEST(EditStyles, AreSelectedByNumberNameAndLikeness) {
    const Opened table(named);
    const std::pair<const wchar_t*, Places> cases[] = {
        {L"1-2,4", {0, 1, 3}},   {L"4, 1 - 2,2", {0, 1, 3}},
        {L"Wall*", {1, 2}},      {L"WALL_?", {1, 2}},
        {L"*", {0, 1, 2, 3, 4}}, {L"=1", {0, 1, 2}},
        {L"=Door", {3, 4}},      {L"7", {4}},
        {L"*a*l*", {0, 1, 2}}};
    for (const auto& [text, expected] : cases) {
        Places places;
        EXPECT_EQ(reason(table.editor.select(text, places)), "");
        EXPECT_EQ(places, expected) << ut::encodeUtf8(text);
    }
    Places places;
    for (const wchar_t* text : {L"0", L"6", L"3-1", L"1-", L"-1", L"1-99999999999999999999", L"",
                                L"=", L"=Wall*", L"??", L"Wall"}) {
        EXPECT_FALSE(table.editor.select(text, places)) << ut::encodeUtf8(text);
    }
}

TEST(EditStyles, LineWeightsAreThoseOfTheTable) {
    const CCustomLineweightTable weights;
    const struct {
        const wchar_t* text;
        int place;
        const char* refusal;
    } cases[] = {{L"0.35", 10, ""},
                 {L"0.35mm", 10, ""},
                 {L"0.350 mm", 10, ""},
                 {L"0.014in", 10, ""},
                 {L"0.0138in", 10, ""},
                 {L"0.02in", 13, ""},
                 {L"object", 0, ""},
                 {L"index:26", 26, ""},
                 {L"0.36", 0, "the nearest is 0.35 mm"},
                 {L"0.0142in", 0, "the nearest is 0.35 mm"},
                 {L"1.1", 0, "the nearest is 1.06 mm"},
                 {L"250", 0, "the nearest is 2.11 mm"},
                 {L"-1", 0, "the nearest is 0 mm"},
                 {L"index:27", 0, "index:26"},
                 {L"0,35", 0, "write millimetres"},
                 {L"thick", 0, "write millimetres"}};
    for (const auto& [text, place, refusal] : cases) {
        CPlotStyle style;
        EXPECT_THAT(
            reason(setStyle(style, *platen::findStyleSetting(L"lineweight"), text, weights)),
            HasSubstr(refusal))
            << ut::encodeUtf8(text);
        EXPECT_EQ(style.lineWeight(), place) << ut::encodeUtf8(text);
    }
    Opened table(named);
    EXPECT_EQ(reason(table.editor.setLineWeight(8, L"0.01in")), "");
    EXPECT_DOUBLE_EQ(table.editor.table().customLineweights()[8], 0.254);
    EXPECT_EQ(reason(table.editor.setLineWeight(0, L"200")), "");
    for (const wchar_t* text : {L"200.1", L"-0.1", L"8in", L"nan", L""}) {
        EXPECT_FALSE(table.editor.setLineWeight(8, text)) << ut::encodeUtf8(text);
    }
    EXPECT_FALSE(table.editor.setLineWeight(27, L"1"));
}

TEST(EditStyles, ColoursAreShownAsTheyWereSet) {
    for (const wchar_t* color : {L"#ff0000", L"#0000ff", L"#ff8001", L"#ffffff", L"index:5",
                                 L"object", L"index:255", L"#000000"}) {
        CPlotStyle style;
        ASSERT_TRUE(setStyle(style, *platen::findStyleSetting(L"color"), color, {}));
        EXPECT_EQ(platen::colorText(style), ut::encodeUtf8(color));
    }
    CPlotStyle packed;
    const platen::StyleSetting& setting = *platen::findStyleSetting(L"color");
    EXPECT_TRUE(setStyle(packed, setting, L"#ff8000 (c2ff8000/c2ff8000/5)", {}));
    EXPECT_EQ(settingText(packed, setting, {}), "#ff8000 (c2ff8000/c2ff8000/5)");
    EXPECT_FALSE(setStyle(packed, setting, L"#ff8001 (c2ff8000/c2ff8000/5)", {}));
    // A colour of the palette stands with its red, green and blue.
    CPlotStyle red;
    ASSERT_TRUE(setStyle(red, setting, L"#ff0000", {}));
    EXPECT_EQ(platen::colorInWords(red.color()), "#ff0000");
    // A colour that a driver reads as red, green, blue.
    CPlotStyle style;
    ASSERT_TRUE(setStyle(style, *platen::findStyleSetting(L"color"), L"#ff8001", {}));
    EXPECT_EQ(static_cast<std::uint32_t>(style.mode_color()), 0xC2FF8001U);
    EXPECT_EQ(style.color2rgb(), 0x0180FF);
}

/// Names and unknown items of all styles.
std::vector<std::string> stylesIn(const std::string& body) {
    PiaInput input;
    std::vector<std::string> found;
    EXPECT_TRUE(input.openBody(body));
    for (std::size_t index = 0;; ++index) {
        const std::wstring path = L"plot_style/" + std::to_wstring(index);
        const auto names = piaFindItems(*input.root(), path + L"/name");
        const auto vendors = piaFindItems(*input.root(), path + L"/vendor");
        if (names.empty()) {
            return found;
        }
        found.push_back(
            ut::encodeUtf8(static_cast<const PiaStr*>(names[0])->value) +
            (vendors.empty()
                 ? ""
                 : ' ' + ut::encodeUtf8(static_cast<const PiaStr*>(vendors[0])->value)));
    }
}

TEST(EditStyles, StylesComeAndGoWithWhatTheFileHasOfThem) {
    Opened table(named);
    const std::size_t door = 3;
    EXPECT_EQ(reason(table.editor.add(L"Door thin", &door)), "");
    EXPECT_EQ(reason(table.editor.rename(1, L"Outer wall")), "");
    EXPECT_EQ(reason(table.editor.remove({0, 2})), "");
    EXPECT_THAT(stylesIn(table.written()),
                ElementsAre("Outer_wall v1", "Door v3", "7 v4", "Door_thin"));
    for (const wchar_t* name : {L"", L" ", L"a\nb", L"DOOR", L"outer\twall"}) {
        EXPECT_FALSE(table.editor.add(name)) << ut::encodeUtf8(name);
        EXPECT_FALSE(table.editor.rename(2, name)) << ut::encodeUtf8(name);
    }
    EXPECT_FALSE(table.editor.remove({0, 1, 2, 3}));

    Opened equal(named);
    const platen::EqualStyles groups = platen::equalStyles(equal.editor.table());
    EXPECT_THAT(groups, ElementsAre(Places{1, 2}, Places{3, 4}));
    EXPECT_EQ(reason(equal.editor.merge(groups)), "");
    EXPECT_THAT(stylesIn(equal.written()), ElementsAre("Normal v0", "Wall_1 v1", "Door v3"));
}

TEST(EditStyles, ColoursFollowMergedStylesAndTablesByColourKeepTheirs) {
    const std::unique_ptr<CPlotStyleTable> colours(CPlotStyleTable::create(true, L"d"));
    colours->style(4)->setScreen(10);
    colours->style(5)->setScreen(20);
    std::unique_ptr<CPlotStyleTable> made(ctb2stb(*colours, L"Pen"));
    made->style(3)->setScreen(10);
    PiaBlock root(L"");
    ASSERT_TRUE(made->writeToBlock(root));
    Opened table(piaBodyText(root));
    EXPECT_FALSE(table.editor.remove({3}));
    ASSERT_EQ(reason(table.editor.merge(platen::equalStyles(table.editor.table()))), "");
    ASSERT_EQ(reason(table.editor.add(L"More")), "");
    const Opened merged(table.written());
    const platen::ColourTable back = platen::colourTableOf(merged.editor.table());
    ASSERT_TRUE(back.table);
    EXPECT_EQ(back.table->style(4)->screen(), 10);
    EXPECT_EQ(back.table->style(5)->screen(), 10);
    EXPECT_EQ(back.table->style(6)->screen(), 100);
    EXPECT_EQ(back.table->style(6)->name(), L"Color_7");
    EXPECT_THAT(back.lost, ElementsAre("the style \"Normal\", which no colour uses",
                                       "the name \"Pen 1\" of what is now colour 1-4, 7-255",
                                       "the name \"Pen 2\" of what is now colour 5-6",
                                       "the style \"More\", which no colour uses"));
    EXPECT_FALSE(platen::colourTableOf(Opened(named).editor.table()).table);

    PiaBlock rootByColour(L"");
    ASSERT_TRUE(colours->writeToBlock(rootByColour));
    Opened byColour(piaBodyText(rootByColour));
    EXPECT_FALSE(byColour.editor.add(L"More"));
    EXPECT_FALSE(byColour.editor.remove({0}));
    EXPECT_FALSE(byColour.editor.merge({{0, 1}}));
}

TEST(EditStyles, PresetsGiveWhatTheyAreNamedAfter) {
    for (const platen::TablePreset& preset : platen::tablePresets()) {
        for (const bool byColour : {true, false}) {
            const std::unique_ptr<CPlotStyleTable> table(CPlotStyleTable::create(byColour, L""));
            EXPECT_EQ(reason(platen::applyPreset(preset.name, *table)), "") << preset.name;
        }
    }
    const std::unique_ptr<CPlotStyleTable> table(CPlotStyleTable::create(true, L""));
    ASSERT_TRUE(platen::applyPreset("iso-0.18", *table));
    const auto weight = [&](std::size_t colour) {
        return table
            ->customLineweights()[static_cast<std::size_t>(table->style(colour - 1)->lineWeight())];
    };
    EXPECT_EQ(weight(1), 0.18);
    EXPECT_EQ(weight(8), 2.0);
    EXPECT_EQ(weight(9), 0.18);
    EXPECT_FALSE(platen::applyPreset("iso-", *table));
}

}  // namespace
