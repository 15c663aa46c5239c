#include <gmock/gmock.h>

#include <cmath>
#include <memory>
#include <nlohmann/json.hpp>

#include <platen/chart_files.h>
#include <platen/edit_styles.h>
#include "tests/chart/scenes.h"
#include "tests/support/documents.h"
#include "tests/support/json_seen.h"
#include "tests/support/random_tables.h"

using namespace platen;
using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::IsSubsetOf;
using testing::Not;

namespace {

using Table = std::unique_ptr<CPlotStyleTable>;

Table colorTable() { return Table(CPlotStyleTable::create(true, L"Pens of the office")); }

Table tableOf(const std::string& body) {
    PiaInput input;
    auto table = std::make_unique<CPlotStyleTable>();
    return input.openBody(body) && table->init(input) ? std::move(table) : nullptr;
}

/// The width of the line of a style, 0 for none.
double lineOf(const Scene& scene, int number) {
    const auto lines = shapesIn<ScenePolyline>(groupOf(scene, "style-" + std::to_string(number)));
    // The last one parts the rows.
    return lines.size() < 2 || !lines.front().stroke ? 0 : lines.front().stroke->width;
}

TEST(ChartTest, LinesAreAsWideAsTheTableSays) {
    const Table table = colorTable();
    table->customLineweights()[26] = 25;
    for (int index = 0; index < 27; ++index) {
        table->style(static_cast<std::size_t>(index))->setLineWeight(index);
    }
    table->style(27)->setLineWeight(40);
    const Scene scene = tableChart(*table);
    for (int index = 1; index < 27; ++index) {
        const double weight = table->customLineweights()[static_cast<std::size_t>(index)];
        EXPECT_EQ(lineOf(scene, index + 1), weight);
        EXPECT_THAT(textIn(groupOf(scene, "style-" + std::to_string(index + 1))),
                    HasSubstr(ut::formatFixedAscii(weight, 2) + " mm\n"));
    }
    // The object's weight is a wedge, and one that the table does not have is none.
    EXPECT_EQ(lineOf(scene, 1), 0);
    EXPECT_THAT(textIn(groupOf(scene, "style-1")), HasSubstr("object\n"));
    EXPECT_EQ(lineOf(scene, 28), 0);
    EXPECT_THAT(textIn(groupOf(scene, "style-28")), HasSubstr("weight 40\n"));
    EXPECT_THAT(sceneSvg(scene), HasSubstr("stroke-width=\"0.13\""));
}

TEST(ChartTest, DevicesPrintWholeDots) {
    const Table table = colorTable();
    // 0.05, 0.09 and 0.1 mm are a dot of 1/300 inch each, 0.13 mm are two.
    for (const int index : {1, 2, 3, 4, 8}) {
        table->style(static_cast<std::size_t>(index))->setLineWeight(index);
    }
    const Scene scene = tableChart(*table, {.dpi = 300});
    const double dot = 25.4 / 300;
    const std::pair<int, int> dots[] = {{2, 1}, {3, 1}, {4, 1}, {5, 2}, {9, 3}};
    for (const auto& [number, count] : dots) {
        EXPECT_DOUBLE_EQ(lineOf(scene, number), dot * count) << number;
    }
    EXPECT_THAT(textIn(scene.pages[0].shapes),
                AllOf(HasSubstr("A: 0.05, 0.09 and 0.10 mm (1 dot)"), Not(HasSubstr("B: "))));
    EXPECT_THAT(textIn(groupOf(scene, "style-2")), HasSubstr("1 dot, A\n"));
    EXPECT_THAT(textIn(groupOf(scene, "style-5")), HasSubstr("2 dots\n"));
    EXPECT_THAT(scene.description, HasSubstr("300 dots per inch"));
    EXPECT_THAT(textIn(tableChart(*table, {.dpi = 5000}).pages[0].shapes),
                HasSubstr("All weights in use stay different."));
}

TEST(ChartTest, ColoursAreAsPlotted) {
    const Table table = colorTable();
    table->style(1)->setScreen(50);
    EXPECT_TRUE(setStyle(*table->style(2), *findStyleSetting(L"color"), L"#ff8000",
                         table->customLineweights()));
    table->style(3)->setGrayScale(true);
    table->style(4)->setScreen(0);
    const Scene scene = tableChart(*table);
    const SceneColor expected[] = {
        {255, 0, 0}, {255, 255, 128}, {255, 128, 0}, {179, 179, 179}, {255, 255, 255}};
    for (int number = 1; number <= 5; ++number) {
        const auto shapes = groupOf(scene, "style-" + std::to_string(number));
        EXPECT_EQ(shapesIn<SceneRectangle>(shapes)[0].fill, expected[number - 1]) << number;
    }
    EXPECT_THAT(textIn(groupOf(scene, "style-4")), HasSubstr("gray"));
}

TEST(ChartTest, EqualStylesShareARow) {
    const Table table = colorTable();
    table->style(9)->setScreen(70);
    const Scene scene = tableChart(*table, {.gather = true});
    EXPECT_THAT(textIn(groupOf(scene, "style-1")), HasSubstr("1-9, 11-255\n"));
    EXPECT_THAT(textIn(groupOf(scene, "style-10")), AllOf(HasSubstr("10\n"), HasSubstr("70 %")));
    EXPECT_EQ(scene.pages[0].width, 148);
}

TEST(ChartTest, SheetsSuitWhatIsOnThem) {
    const Table many = colorTable();
    const Table few(CPlotStyleTable::create(false, nullptr));
    EXPECT_TRUE(few->addStyle(L"Wall", -1, nullptr) && few->addStyle(L"Door", -1, nullptr));
    struct Case {
        const CPlotStyleTable& table;
        const char* sheet;
        ChartOrientation orientation;
        std::size_t pages;
        double width;
        double height;
    };
    using enum ChartOrientation;
    const Case cases[] = {{*many, "", Automatic, 1, 420, 297},
                          {*few, "", Automatic, 1, 148, 105},
                          {*few, "", Portrait, 1, 105, 148},
                          {*few, "a3", Automatic, 1, 420, 297},
                          {*many, "A4", Portrait, 2, 210, 297},
                          {*many, "A0", Automatic, 1, 1189, 841},
                          {*many, "300x200.5", Automatic, 2, 300, 200.5}};
    for (const Case& one : cases) {
        const Scene scene =
            tableChart(one.table, {.sheet = chartSheet(one.sheet), .orientation = one.orientation});
        EXPECT_EQ(scene.pages.size(), one.pages) << one.sheet;
        EXPECT_EQ(scene.pages[0].width, one.width) << one.sheet;
        EXPECT_EQ(scene.pages[0].height, one.height) << one.sheet;
        expectSound(scene);
    }
    for (const char* name : {"", "A9", "99x200", "200x5001", "x", "200x", "nanx200"}) {
        EXPECT_FALSE(chartSheet(name)) << name;
    }
}

// Names of files are text wherever they go, and no table leaves its page.
TEST(ChartTest, WhateverATableHoldsIsDrawnAsText) {
    const Table hostile(CPlotStyleTable::create(false, L"</desc><script>a()</script>\x202E]]>"));
    for (const std::wstring& name :
         {std::wstring(L"</text><script>b()</script>"), std::wstring(L"\" onload=\"c()"),
          std::wstring(L"\x1B[2J\x01"), std::wstring(L"\x5D0\x5D1\x202E"), std::wstring(300, L'W'),
          std::wstring(L"\x58C1\x306E\x7DDA")}) {
        EXPECT_TRUE(hostile->addStyle(name.c_str(), -1, nullptr));
    }
    std::vector<Table> tables;
    tables.push_back(Table(new CPlotStyleTable(*hostile)));
    for (std::uint32_t seed = 0; seed < 6; ++seed) {
        tables.push_back(
            tableOf(RandomTable(seed, static_cast<TableShape>(seed % 3), true).body()));
        ASSERT_NE(tables.back(), nullptr);
    }
    const ChartOptions options[] = {
        {.title = "</title><script>"},
        {.sheet = chartSheet("A5"), .orientation = ChartOrientation::Portrait, .gather = true},
        {.sheet = chartSheet("100x100"), .dpi = 72}};
    const std::vector<std::string> known{"svg",  "title",   "desc",     "g",       "rect",
                                         "text", "polygon", "polyline", "clipPath"};
    for (const Table& table : tables) {
        for (const ChartOptions& option : options) {
            const Scene scene = tableChart(*table, option);
            expectSound(scene);
            const XmlContent svg = xmlOf(sceneSvg(scene));
            EXPECT_THAT(svg.fault, IsEmpty());
            EXPECT_THAT(svg.elements, IsSubsetOf(known));
            EXPECT_FALSE(svg.attributes.contains("onload"));
            const auto json = nlohmann::json::parse(keepJson(sceneJson(scene)));
            EXPECT_EQ(json["schema"], "platen.scene/1");
            EXPECT_EQ(json["pages"].size(), scene.pages.size());
            EXPECT_THAT(sceneHtml(scene), AllOf(HasSubstr("default-src 'none'"),
                                                Not(HasSubstr("<script")), Not(HasSubstr("\x1B"))));
        }
    }
    const XmlContent svg = xmlOf(sceneSvg(tableChart(*hostile)));
    EXPECT_THAT(svg.text, AllOf(HasSubstr("</text><script>b()</script>"),
                                HasSubstr("\" onload=\"c()"), HasSubstr("\xE2\x90\x9B[2J")));
}

Config pdfConfig(const std::vector<CustomPaperSize>& papers) {
    Config config(CPlotCfg3::create(BuiltInPlotDevice::pdfName));
    config->setCustomPaperSizes(papers);
    return config;
}

CustomPaperSize paper(const std::wstring& name, double width, double height, double margin = 0,
                      std::int32_t units = OdDbPlotSettings::kMillimeters) {
    CustomPaperSize made;
    made.globalName = made.localName = name;
    made.units = units;
    made.width = width;
    made.height = height;
    made.left = made.bottom = made.right = made.top = margin;
    return made;
}

/// How much smaller than the paper it is drawn, by the bar of its page.
double scaleOf(const ScenePage& page) {
    for (const SceneText& run : shapesIn<SceneText>(page.shapes)) {
        double scale = 0;
        if (run.text.starts_with("Scale 1 : ") && ut::scanDouble(run.text.substr(10), scale)) {
            return scale;
        }
    }
    return 0;
}

TEST(ChartTest, PapersAreToScale) {
    const Config config = pdfConfig({paper(L"Plan", 900, 600, 15), paper(L"Card", 8.5, 11, 0.5, 0),
                                     paper(L"Chosen <b>", 420, 297)});
    bool changed = false;
    config->setPaperSize(2, true, changed);
    const Scene scene = papersChart(*config);
    ASSERT_EQ(scene.pages.size(), 1U);
    expectSound(scene);
    const double scale = scaleOf(scene.pages[0]);
    ASSERT_GT(scale, 0);
    // By height: each after its shadow, with what can be printed on in it.
    const auto plan = shapesIn<SceneRectangle>(groupOf(scene, "paper-1"));
    EXPECT_DOUBLE_EQ(plan[1].width, 900 / scale);
    EXPECT_DOUBLE_EQ(plan[1].height, 600 / scale);
    EXPECT_DOUBLE_EQ(plan[2].width, 870 / scale);
    EXPECT_DOUBLE_EQ(plan[2].x - plan[1].x, 15 / scale);
    EXPECT_THAT(textIn(groupOf(scene, "paper-2")),
                AllOf(HasSubstr("Chosen <b>\n"), HasSubstr("chosen\n"), HasSubstr("no margins")));
    EXPECT_THAT(textIn(groupOf(scene, "paper-3")),
                AllOf(HasSubstr("8.5 \xC3\x97 11 in"), HasSubstr("margins 0.5 in"),
                      Not(HasSubstr("chosen"))));
    const auto card = shapesIn<SceneRectangle>(groupOf(scene, "paper-3"));
    EXPECT_DOUBLE_EQ(card[1].width, 8.5 * 25.4 / scale);
}

TEST(ChartTest, AnyPapersFindTheirPlace) {
    std::vector<CustomPaperSize> many;
    for (int index = 0; index < 100; ++index) {
        many.push_back(
            paper(L"Paper " + std::to_wstring(index), 200 + index * 9, 300 + index * 4, 5));
    }
    const double huge = 1e300;
    const std::vector<std::vector<CustomPaperSize>> lists{
        {},
        {paper(L"", 0, 0), paper(L"x", -5, 100), paper(L"y", huge, 1), paper(L"z", 100, 100, 60),
         paper(L"n", 100, 100, -3), paper(std::wstring(500, L'W'), 1e6, 1)},
        {paper(L"roll", 914, 50000), paper(L"card", 85, 55), paper(L"pixels", 1920, 1080, 0, 2)},
        many};
    for (const std::vector<CustomPaperSize>& list : lists) {
        const Config config = pdfConfig(list);
        for (const char* sheet : {"", "A4", "100x100"}) {
            const Scene scene = papersChart(
                *config, {.sheet = chartSheet(sheet), .orientation = ChartOrientation::Portrait});
            expectSound(scene);
            EXPECT_THAT(xmlOf(sceneSvg(scene)).fault, IsEmpty());
            // The chosen one is none of these.
            groupOf(scene, "paper-" + std::to_string(list.size() + 1));
        }
    }
    EXPECT_LE(papersChart(*pdfConfig(many)).pages.size(), 3U);
    expectSound(papersChart(*pdfConfig(many), {.devicePapers = true}));
    const auto parameters = parametersOf(fullParameters);
    ASSERT_NE(parameters, nullptr);
    expectSound(papersChart(*parameters));
    EXPECT_THAT(papersChart(*parameters).description, HasSubstr("calibration x 1.001, y 0.999"));
    expectSound(papersChart(*configOf(bareConfiguration)));
}

TEST(ChartTest, FilesAreAsLargeAsTheirPagesAndAlwaysTheSame) {
    const Table table = colorTable();
    const Scene scene = tableChart(*table, {.title = "Pens", .sheet = chartSheet("300x200")});
    ASSERT_EQ(scene.pages.size(), 2U);
    const SceneFile pdf = scenePdf(scene);
    ASSERT_TRUE(pdf) << pdf.fault;
    EXPECT_THAT(pdf.bytes, AllOf(testing::StartsWith("%PDF-"), HasSubstr("/Count 2"),
                                 HasSubstr("/MediaBox [ 0 0 850.393701 566.929134 ]"),
                                 Not(HasSubstr("Date"))));
    EXPECT_EQ(scenePdf(scene).bytes, pdf.bytes);
    const SceneFile png = scenePng(scene, 25.4);
    ASSERT_TRUE(png) << png.fault;
    // Two pages of 300 x 200 mm with 8 mm between them, and 1000 pixels a metre.
    EXPECT_EQ(png.bytes.substr(16, 8), std::string("\0\0\x01\x2C\0\0\x01\x98", 8));
    EXPECT_EQ(png.bytes.substr(37, 13), std::string("pHYs\0\0\x03\xE8\0\0\x03\xE8\x01", 13));
    EXPECT_EQ(scenePng(scene, 25.4).bytes, png.bytes);
    EXPECT_THAT(scenePng(scene, 3000).fault, HasSubstr("lower resolution"));
}

}  // namespace
