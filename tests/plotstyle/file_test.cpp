#include <gtest/gtest.h>

#include <limits>
#include <memory>

#include <platen/plotstyle.h>
#include <platen/utcore.h>
#include "tests/support/configurations.h"
#include "tests/support/files.h"
#include "tests/support/trees.h"

namespace {

using Lines = std::vector<std::string>;

const Lines styleLines{
    "name=\"Wall",  "localized_name=\"Wall", "description=\"",        "color=-1",
    "mode_color=5", "color_policy=1",        "physical_pen_number=0", "virtual_pen_number=0",
    "screen=100",   "linepattern_size=0.5",  "linetype=31",           "adaptive_linetype=TRUE",
    "lineweight=0", "fill_style=73",         "end_style=4",           "join_style=5"};

const Lines settingLines{
    "description=\"Walls", "aci_table_available=FALSE",         "scale_factor=2.5",
    "apply_factor=TRUE",   "custom_lineweight_display_units=1",
};

std::string text(const Lines& lines) {
    std::string joined;
    for (const std::string& line : lines) {
        joined += line + '\n';
    }
    return joined;
}

std::string block(const std::string& name, const std::string& content) {
    return name + "{\n" + content + "}\n";
}

std::string style(const std::string& number, const std::string& name = "Wall") {
    Lines lines = styleLines;
    lines[0] = "name=\"" + name;
    return block(number, text(lines));
}

/// A body with these settings and the given content of "plot_style", then `rest`.
std::string body(const std::string& styles, const std::string& rest = {},
                 const Lines& settings = settingLines) {
    return text(settings) + block("plot_style", styles) + rest;
}

/// The same for a colour-dependent table.
std::string colorBody(const std::string& styles, const std::string& rest) {
    Lines settings = settingLines;
    settings[1] = "aci_table_available=TRUE";
    return body(styles, rest, settings);
}

/// `count` children named from 0, each made by `make(number)`.
template <class Make>
std::string numbered(int count, Make make) {
    std::string content;
    for (int number = 0; number < count; ++number) {
        content += make(std::to_string(number));
    }
    return content;
}

std::string aciTable(int count, const std::string& name = "wALL") {
    return block("aci_table",
                 numbered(count, [&](const std::string& n) { return n + "=\"" + name + '\n'; }));
}

std::string lineWeights(int count, const std::string& value = "0.5") {
    return block("custom_lineweight_table",
                 numbered(count, [&](const std::string& n) { return n + '=' + value + '\n'; }));
}

/// Empty when the table reads, otherwise the word and the place of the fault.
std::string faultOf(const std::string& text, CPlotStyleTable& table) {
    PiaInput input;
    EXPECT_TRUE(input.openBody(text)) << text;
    if (table.init(input)) {
        return {};
    }
    const auto& failure = input.report().failure();
    EXPECT_TRUE(failure && namesItsLine(text, *failure)) << failure->describe();
    return failure ? piaCodeWord(failure->code) + (' ' + ut::encodeUtf8(failure->path)) : "?";
}

std::string faultOf(const std::string& text) {
    CPlotStyleTable table;
    return faultOf(text, table);
}

std::string writtenBody(const CPlotStyleTable& table) {
    const TemporaryFolder folder;
    EXPECT_TRUE(table.write(folder.wide("a.stb").c_str()));
    return bodyOf(readBytes(folder.path("a.stb")));
}

TEST(PlotStyleFile, EveryRequiredKeyIsNamedWhenItIsMissing) {
    const auto dropEach = [](const Lines& lines, const std::string& fault, const char* optional,
                             auto bodyWith) {
        for (std::size_t dropped = 0; dropped < lines.size(); ++dropped) {
            const std::string key = lines[dropped].substr(0, lines[dropped].find('='));
            Lines others = lines;
            others.erase(others.begin() + static_cast<std::ptrdiff_t>(dropped));
            EXPECT_EQ(faultOf(bodyWith(others)), key == optional ? "" : fault + key);
        }
    };
    dropEach(styleLines, "key-missing plot_style/1/", "mode_color",
             [](const Lines& lines) { return body(style("0") + block("1", text(lines))); });
    dropEach(settingLines, "key-missing ", "custom_lineweight_display_units",
             [](const Lines& lines) { return body(style("0"), {}, lines); });
    EXPECT_EQ(faultOf(text(settingLines)), "key-missing plot_style");
    // Of the type that the style before has.
    const TemporaryFolder folder;
    writeBytes(folder.path("a.stb"),
               fileAround(body(style("0") + edited(style("1"), "screen=", "screen=\""))));
    EXPECT_EQ(CPlotStyleTable::read(folder.wide("a.stb").c_str()), nullptr);
    writeBytes(
        folder.path("a.stb"),
        fileAround(body(style("0") + edited(style("1"), "linetype=TRUE", "linetype=FALSE"))));
    const std::unique_ptr<CPlotStyleTable> read(
        CPlotStyleTable::read(folder.wide("a.stb").c_str()));
    EXPECT_TRUE(read->style(0)->isAdaptiveLinetype() && !read->style(1)->isAdaptiveLinetype());
}

TEST(PlotStyleFile, FaultsOfTables) {
    const std::string walls =
        numbered(255, [](const std::string& n) { return style(n, "Wall" + n); });
    const std::string wall = style("0");
    std::string renumbered = aciTable(255);
    renumbered.replace(renumbered.find("254=\""), 3, "007");
    struct Case {
        const char* what;
        std::string text;
        std::string fault;
    };
    const Case cases[] = {
        {"no styles", body(""), ""},
        {"number past the end", body(style("1")), "index-invalid plot_style/1"},
        {"number used twice", body(style("1") + style("01")), "index-invalid plot_style/01"},
        {"no number", body(style("first")), "index-invalid plot_style/first"},
        {"no block", body("0=\"Wall\n"), "value-invalid plot_style/0"},
        {"no number in a key", body(block("0", text(styleLines) + "x=1\n")), ""},
        {"one style for all colours", colorBody(wall, aciTable(255)), ""},
        {"254 colours", colorBody(wall, aciTable(254)), "count-wrong aci_table"},
        {"256 colours", colorBody(wall, aciTable(256)), "count-wrong aci_table"},
        {"colour twice", colorBody(wall, renumbered), "index-invalid aci_table/007"},
        {"unknown style", colorBody(wall, aciTable(255, "Wal")), "style-unknown aci_table/0"},
        {"number for a style",
         colorBody(wall, block("aci_table", numbered(255, [](auto n) { return n + "=1\n"; }))),
         "value-invalid aci_table/0"},
        {"no colours wanted", body(wall, aciTable(3)), ""},
        {"colours by position", colorBody(walls, ""), ""},
        {"too many for positions", colorBody(walls + style("255"), ""), "count-wrong plot_style"},
        {"too few for positions", colorBody(wall, ""), "count-wrong plot_style"},
        {"27 weights", body(wall, lineWeights(27)), ""},
        {"26 weights", body(wall, lineWeights(26)), "count-wrong custom_lineweight_table"},
        {"28 weights", body(wall, lineWeights(28)), "count-wrong custom_lineweight_table"},
        {"weight is no number", body(wall, lineWeights(27, "thin")),
         "value-invalid custom_lineweight_table/0"},
        {"weight is a text", body(wall, lineWeights(27, "\"1")),
         "value-invalid custom_lineweight_table/0"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(faultOf(c.text), c.fault) << c.what;
    }
    PiaInput never;
    CPlotStyleTable table;
    EXPECT_FALSE(table.init(never));
    PiaReport report;
    EXPECT_EQ(CPlotStyleTable::read(L"no such folder/no such file.ctb", &report), nullptr);
    EXPECT_TRUE(report.failure().has_value());
    EXPECT_FALSE(table.write(nullptr));
}

TEST(PlotStyleFile, StylesStandByTheirNumbers) {
    CPlotStyleTable table;
    ASSERT_EQ(faultOf(body(style("1", "B") + style("0", "A"), lineWeights(27)), table), "");
    ASSERT_EQ(table.size(), 2U);
    EXPECT_TRUE(table.style(0)->name() == L"A" && table.style(1)->name() == L"B");
    EXPECT_EQ(table.style(1)->mode_color(), 5);
    EXPECT_EQ(table.customLineweights()[26], 0.5);
    EXPECT_FALSE(table.hasACI() || table.useACI() || table.ACI() != nullptr);

    Lines plain = styleLines;
    plain[3] = "color=3271557120";
    plain[4] = "mode_color=x";
    ASSERT_EQ(faultOf(body(block("0", text(plain))), table), "");
    EXPECT_EQ(table.style(0)->color(), -1023410176);
    EXPECT_EQ(table.style(0)->mode_color(), -1023410176);
    EXPECT_EQ(table.customLineweights()[26], 2.11) << "a table is read anew";
}

TEST(PlotStyleFile, ColorsFindTheFirstStyleOfTheirName) {
    const std::string styles =
        style("0", "a") + style("1", "B") + style("2", "b") + style("3", "A") + style("4", "c");
    std::string entries;
    for (int entry = 254; entry >= 0; --entry) {
        entries += std::to_string(entry) + "=\"" + "AbC"[entry % 3] + '\n';
    }
    CPlotStyleTable table;
    ASSERT_EQ(faultOf(colorBody(styles, block("aci_table", entries)), table), "");
    EXPECT_TRUE(table.hasACI() && table.useACI());
    constexpr std::size_t expected[] = {0, 1, 4};
    for (std::size_t entry = 0; entry < CAciTable::count; ++entry) {
        ASSERT_EQ(table.ACI()->at(entry), table.style(expected[entry % 3])) << entry;
    }

    // A table that fails to read leaves what was there, colours included.
    EXPECT_NE(faultOf(colorBody(styles, aciTable(255, "d")), table), "");
    PiaInput input;
    ASSERT_TRUE(input.openBody(aciTable(255, "d")));
    EXPECT_FALSE(table.initAci(static_cast<PiaBlock&>(*input.root()->items[0])));
    EXPECT_EQ(table.ACI()->at(254), table.style(4));
}

TEST(PlotStyleFile, ColorsByPositionDoNotUseTheAci) {
    const auto make = [](const std::string& n) { return style(n, "same"); };
    CPlotStyleTable table;
    ASSERT_EQ(faultOf(colorBody(numbered(255, make), ""), table), "");
    EXPECT_TRUE(table.hasACI());
    EXPECT_FALSE(table.useACI());
    for (std::size_t entry = 0; entry < CAciTable::count; ++entry) {
        ASSERT_EQ(table.ACI()->at(entry), table.style(entry)) << entry;
    }
    EXPECT_NE(writtenBody(table).find("aci_table{\n 0=\"same\n"), std::string::npos);
}

TEST(PlotStyleFile, TablesOfAnySizeInLinearTime) {
    // A file may hold any number of styles beside its 255 colours; with a search for each, the
    // last of these would take longer than a test may.
    for (const int count : {1, 254, 256, 25'500}) {
        const std::string styles = numbered(count, [](const std::string& n) {
            Lines lines = styleLines;
            lines[0] += n;
            lines[6] = "physical_pen_number=" + n;
            return block(n, text(lines));
        });
        const std::string last = "wall" + std::to_string(count - 1);
        CPlotStyleTable source;
        ASSERT_EQ(faultOf(colorBody(styles, aciTable(255, last)), source), "");
        const auto size = static_cast<std::size_t>(count);
        const CPlotStyleTable copy = source;
        EXPECT_EQ(copy.ACI()->at(0), copy.style(size - 1));

        const std::unique_ptr<CPlotStyleTable> table(ctb2stb(source, nullptr));
        ASSERT_EQ(table->size(), size + 1);
        for (std::size_t entry = 0; entry < CAciTable::count; ++entry) {
            ASSERT_EQ(table->ACI()->at(entry), table->style(entry < size ? entry + 1 : 0)) << entry;
        }
    }
}

TEST(PlotStyleFile, RoundTripOfAColorTable) {
    const std::unique_ptr<CPlotStyleTable> table(CPlotStyleTable::create(true, L"h\u00E9llo"));
    CPlotStyle& changed = *table->style(41);
    changed.updateName(L"My Style");
    changed.setDesc(L"= { } \" odd");
    changed.updateColor(0x00112233);
    changed.setDither(false);
    changed.setPen(1);
    changed.setVirtualPen(255);
    changed.setScreen(40);
    changed.setLineType(3);
    changed.setAdaptiveLinetype(false);
    changed.setLineWeight(26);
    changed.setFillStyle(64);
    table->setScaleFactor(0.125);
    table->setApplyFactor(true);
    table->setCustomLineweightDisplayUnits(1);
    table->customLineweights()[26] = 3.75;

    const TemporaryFolder folder;
    for (const std::string_view name : {"round.CTB", "round.ctb.stb", "round"}) {
        const std::wstring path = folder.wide(name);
        ASSERT_TRUE(table->write(path.c_str())) << name;
        EXPECT_EQ(readBytes(path).substr(0, 26), name.ends_with("CTB")
                                                     ? "PIAFILEVERSION_2.0,CTBVER1"
                                                     : "PIAFILEVERSION_2.0,STBVER1");
        const std::unique_ptr<CPlotStyleTable> back(CPlotStyleTable::read(path.c_str()));
        ASSERT_TRUE(back);
        EXPECT_EQ(back->description(), L"h\u00E9llo");
        EXPECT_TRUE(back->style(41)->isEqual(changed, true));
        EXPECT_EQ(writtenBody(*back), writtenBody(*table));
    }
}

TEST(PlotStyleFile, BodyOfANamedTable) {
    std::unique_ptr<CPlotStyleTable> table(CPlotStyleTable::create(false, nullptr));
    const std::string expected =
        "description=\"\naci_table_available=FALSE\nscale_factor=1.000000\napply_factor=FALSE\n"
        "custom_lineweight_display_units=0\nplot_style{\n 0{\n  name=\"Normal\n"
        "  localized_name=\"Normal\n  description=\"\n  color=-1\n  color_policy=1\n"
        "  physical_pen_number=0\n  virtual_pen_number=0\n  screen=100\n"
        "  linepattern_size=0.500000\n  linetype=31\n  adaptive_linetype=TRUE\n  lineweight=0\n"
        "  fill_style=73\n  end_style=4\n  join_style=5\n }\n}\n"
        "custom_lineweight_table{\n 0=0.000000\n";
    const std::string whole = writtenBody(*table);
    EXPECT_EQ(whole.substr(0, expected.size()), expected);
    EXPECT_TRUE(whole.ends_with("\n 25=2.000000\n 26=2.110000\n}\n"));

    // One style with a colour, or with another policy, makes every style write its mode colour.
    ASSERT_TRUE(table->addStyle(L"Gray", -1, nullptr));
    EXPECT_EQ(writtenBody(*table).find("mode_color"), std::string::npos);
    table->style(1)->setGrayScale(true);
    EXPECT_NE(writtenBody(*table).find("\n  color=-1\n  mode_color=-1\n  color_policy=1\n"),
              std::string::npos);
    table->style(1)->setGrayScale(false);
    table->style(1)->updateColor(0xFF);
    EXPECT_NE(writtenBody(*table).find("\n  color=-1\n  mode_color=-1\n"), std::string::npos);
}

TEST(PlotStyleFile, NothingIsWrittenTwice) {
    const std::unique_ptr<CPlotStyleTable> table(CPlotStyleTable::create(true, nullptr));
    PiaTree tree;
    EXPECT_TRUE(table->writeToBlock(tree.root()));
    EXPECT_FALSE(table->writeToBlock(tree.root()));
    EXPECT_TRUE(table->style(0)->write(tree.root(), -1, false));
    EXPECT_FALSE(table->style(0)->write(tree.root(), -1, false));
    for (const int index : {-1, 27, 255}) {
        EXPECT_FALSE(table->writeAciEntry(tree.root(), index) && index != 27);
        EXPECT_FALSE(table->writeCLW(tree.root(), index));
    }
    PiaTree taken;
    ASSERT_NE(taken.root().addBlock(L"custom_lineweight_table"), nullptr);
    EXPECT_FALSE(table->writeToBlock(taken.root()));
}

// No reader would take such a number, so that writing it would lose the table.
TEST(TableFile, NumbersThatAreNoneAreNotWritten) {
    const std::unique_ptr<CPlotStyleTable> table(CPlotStyleTable::create(false, nullptr));
    const TemporaryFolder folder;
    table->customLineweights()[3] = std::numeric_limits<double>::infinity();
    PiaReport report;
    EXPECT_FALSE(table->write(folder.wide("infinite.stb").c_str(), &report));
    EXPECT_EQ(report.failure()->code, PiaCode::ValueInvalid);
    EXPECT_EQ(report.failure()->path, L"custom_lineweight_table/3");
    EXPECT_TRUE(folder.files().empty());
}

}  // namespace
