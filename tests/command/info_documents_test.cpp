#include <nlohmann/json.hpp>
#include <utility>

#include "tests/command/support.h"
#include "tests/support/configurations.h"

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::Not;
using Json = nlohmann::ordered_json;

namespace {

const std::string pmpKey = "user_defined_model_pathname=\"";

/// Every optional key, and no PMP that would be missed.
std::string withoutPmp() {
    return edited(fullConfiguration, pmpKey + "C:\\Plotters\\PMP Files\\no such.pmp", pmpKey);
}

class CommandInfoDocuments : public CommandTest {
protected:
    void putConfig(const std::string& body) { writeFile("a.pc3", body, PiaKind::Pc3); }
    Json document(const char* file) {
        return Json::parse(run({"info", "--json", file}).out)["document"];
    }
};

/// The text of each item in the body is what the JSON document has at the item's path.
void expectItems(const std::string& body, const Json& document) {
    for (const BodyItem& item : itemsOf(body)) {
        if (item.path.starts_with("custom/")) {
            continue;
        }
        std::string value = body.substr(item.begin, item.end - item.begin - 1);
        value.erase(0, value.find('=') + 1);
        const Json& shown = document.at(Json::json_pointer("/" + item.path));
        if (value.front() == '"') {
            EXPECT_EQ(shown, value.substr(1)) << item.path;
        } else if (value == "TRUE" || value == "FALSE") {
            EXPECT_EQ(shown, value == "TRUE") << item.path;
        } else {
            EXPECT_EQ(shown, std::stod(value)) << item.path;
        }
    }
}

TEST_F(CommandInfoDocuments, EveryKeyIsShownAndNoFileChanges) {
    const std::vector<std::string> ofConfigurations{
        "meta", "media", "io", "res_color_mem", "custom", "built_in_device", "pmp"};
    const struct {
        std::string body;
        const char* kind;
        std::vector<std::string> blocks;
    } cases[] = {
        {withoutPmp(), "pc3", ofConfigurations},
        {bareConfiguration, "pc3", ofConfigurations},
        {fullParameters, "pmp", {"meta", "mod", "udm", "hidden"}},
        {bareParameters, "pmp", {"meta", "mod", "udm", "hidden"}},
    };
    for (const auto& [body, kind, blocks] : cases) {
        writeFile("file", body, PiaKind::Pc3);
        const std::string before = read("file");
        const CommandResult result = run({"info", "--json", "@file"});
        EXPECT_THAT(result.err, IsEmpty());
        const Json json = Json::parse(result.out);
        EXPECT_EQ(json["kind"], kind);
        EXPECT_EQ(json["container"]["header"], "PC3");
        std::vector<std::string> keys;
        for (const auto& member : json["document"].items()) {
            keys.push_back(member.key());
        }
        EXPECT_EQ(keys, blocks);
        expectItems(body, json["document"]);
        EXPECT_EQ(run({"info", "@file"}).code, 0);
        EXPECT_EQ(read("file"), before);
    }
    EXPECT_THAT(names(), ElementsAre("file"));
}

TEST_F(CommandInfoDocuments, CustomPropertiesAreSortedByType) {
    putConfig(withoutPmp());
    EXPECT_EQ(document("@a.pc3")["custom"],
              Json::parse(R"({"numbers":{"Odd":"12abc","dmSize":"220"},
                              "binaries":{"RawPrivateDeviceData":"00FFaB"},
                              "strings":{"Note":"text","dmSize":"a text, too"},
                              "bools":{"PdfExport":false}})"));
    EXPECT_TRUE(document("@a.pc3")["built_in_device"].is_null());
    putConfig(edited(withoutPmp(), "canonical_model_name=\"Model", "canonical_model_name=\"JFIF"));
    EXPECT_EQ(document("@a.pc3")["built_in_device"], "Print As JPG");
    putConfig(bareConfiguration);
    EXPECT_TRUE(document("@a.pc3")["custom"].is_null());
}

TEST_F(CommandInfoDocuments, ThePmpIsLookedFor) {
    const std::string body = edited(bareConfiguration, pmpKey, pmpKey + "D:\\Plotters\\papers.pmp");
    putConfig(body);
    expectRun({"info", "@a.pc3"}, 3, HasSubstr("D:\\Plotters\\papers.pmp, not found"),
              HasSubstr(path("PMP")));
    EXPECT_TRUE(document("@a.pc3")["pmp"].is_null());

    std::filesystem::create_directory(path("PMP"));
    writeFile("PMP/papers.pmp", fullParameters, PiaKind::Pc3);
    expectRun({"info", "@a.pc3"}, 0,
              AllOf(HasSubstr("papers.pmp\n"),
                    HasSubstr("custom papers  1\n    Long (\"UserDefinedMetric")));
    const Json json = document("@a.pc3");
    EXPECT_TRUE(
        std::filesystem::equivalent(json["pmp"].get<std::string>(), path("PMP/papers.pmp")));
    EXPECT_EQ(json["meta"]["user_defined_model_pathname"], "D:\\Plotters\\papers.pmp");

    writeFile("PMP/papers.pmp", edited(fullParameters, "hidden{\n media{", "hidden{\n x{"),
              PiaKind::Pc3);
    EXPECT_THAT(run({"info", "@a.pc3"}).err, HasSubstr("at hidden,"));
    writeFile("PMP/papers.pmp", edited(fullParameters, "udm{", "udn{"), PiaKind::Pc3);
    expectRun({"info", "@a.pc3"}, 3, HasSubstr("papers.pmp, cannot be read"), HasSubstr("at udm"));
    EXPECT_EQ(document("@a.pc3")["pmp"], Json());
}

TEST_F(CommandInfoDocuments, PeopleReadTheSettings) {
    const std::string pdf =
        edited(withoutPmp(), "canonical_model_name=\"Model", "canonical_model_name=\"pdf");
    const std::pair<std::string, std::vector<std::string>> cases[] = {
        {withoutPmp(),
         {"  device         printer \"\\\\server\\plotter\"\n", "hpgl.hdi, version 6.1, Driver\n",
          "210 x 297 pixels, landscape, scaled to 50 %\n", "5, 6 to 205, 291 pixels\n",
          "  copies         3, collated\n", "600 x 300 dots per inch, named 600x300_Best\n",
          "  output         to a file, LPT1\n", "  PMP            none\n",
          "Rolle (\"Roll\"): 36 x 100 in, margins left 0.1, bottom 0.2, right 0.3, top 0.4\n",
          "RawPrivateDeviceData: 3 bytes\n"}},
        {edited(pdf, "\"ISO_A4_(210.00_x_297.00_MM)", "\"ANSI_A"),
         {"  device         Print As PDF, built in\n", "papers up to 5080 x 5080 mm\n",
          "ANSI_A, 210 x 297 pixels"}},
        {edited(edited(edited(pdf, "\"ISO_A4_(210.00_x_297.00_MM)", "\"ANSI_A"),
                       "dimensional=FALSE", "dimensional=TRUE"),
                "    urx=210.000000\n    ury=297", "    urx=215.9\n    ury=279.4"),
         {"ANSI_A, 8.5 x 11 in (215.9 x 279.4 mm), landscape"}},
        {edited(withoutPmp(), "local_name=\"Rolle", "local_name=\""), {"    Roll: 36 x 100 in"}},
        {edited(withoutPmp(), "system_cfg=FALSE", "system_cfg=TRUE"),
         {"programs take the default printer instead"}},
        {fullParameters,
         {"papers up to 900 x 5000.5 mm\n", "  calibration    x 1.001, y 0.999\n",
          "  user papers    1\n    Long (\"UserDefinedMetric (100.00 x 200.00MM)\"): 100 x 200 "}},
        {edited(fullParameters, "  max_roll_height=100.000000\n", ""), {"no limit\n"}},
        {bareParameters, {"papers of any size\n", "  user papers    none\n"}},
    };
    for (const auto& [body, lines] : cases) {
        putConfig(body);
        const std::string out = run({"info", "@a.pc3"}).out;
        for (const std::string& line : lines) {
            EXPECT_THAT(out, HasSubstr(line));
        }
    }
}

TEST_F(CommandInfoDocuments, LongListsAreCutForPeopleOnly) {
    std::string papers;
    for (int number = 0; number < 150; ++number) {
        papers += customPaper(std::to_string(number), 'G' + std::to_string(number), 1);
    }
    putConfig(withCustomPapers(bareConfiguration, papers));
    const std::string out = run({"info", "@a.pc3"}).out;
    EXPECT_THAT(out, HasSubstr("custom papers  150\n"));
    EXPECT_THAT(out, HasSubstr("G99 local (\"G99\"): 10 x 20 mm, no margins\n    and 50 more"));
    EXPECT_EQ(document("@a.pc3")["media"]["custom_papers"].size(), 150U);
}

TEST_F(CommandInfoDocuments, ItemsThatTheDocumentDropsAreWarnedOf) {
    putConfig(
        edited(edited(withoutPmp(), "io{\n", "io{\n speed=3\n"), "hard_soft=2", "hard_soft=x"));
    expectWarned({"info", "@a.pc3"},
                 MatchesRegex(".*warning: io/speed is no part of the document.*\n"
                              ".*warning: res_color_mem/hard_soft does not convert.*\n"));
    // What the reader has spoken of is not named twice.
    putConfig(edited(withoutPmp(), "  collating_type=1\n", ""));
    expectWarned({"info", "@a.pc3"},
                 AllOf(HasSubstr("media/destination"), Not(HasSubstr("no part of the document"))));
    std::string items;
    for (int number = 0; number < 2000; ++number) {
        items += "n" + std::to_string(number) + "=1\n";
    }
    putConfig(items + bareConfiguration);
    expectWarned({"info", "@a.pc3"},
                 AllOf(HasSubstr("n19 is no part"), Not(HasSubstr("n20 is no part")),
                       HasSubstr("980 more such items")));
}

}  // namespace
