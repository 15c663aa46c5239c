#include "tests/command/json_lines.h"

using testing::_;
using testing::ElementsAre;
using testing::HasSubstr;
using Json = nlohmann::ordered_json;

namespace {

using CommandJsonTest = CommandTest;

std::vector<std::string> keysOf(const Json& object) {
    std::vector<std::string> keys;
    for (const auto& member : object.items()) {
        keys.push_back(member.key());
    }
    return keys;
}

TEST_F(CommandJsonTest, InfoHasTheDocumentedKeys) {
    prepare({"create", "ctb", "-o", "@table", "--description", "B\xC3\xBCro"});
    const Json json = Json::parse(run({"info", "--json", "@table"}).out);
    EXPECT_THAT(keysOf(json), ElementsAre("schema", "file", "kind", "container", "document"));
    EXPECT_EQ(json["schema"], "platen.info/1");
    EXPECT_EQ(json["file"], path("table"));
    EXPECT_EQ(json["kind"], "ctb");
    EXPECT_THAT(keysOf(json["container"]), ElementsAre("version", "header", "body_bytes",
                                                       "compressed_bytes", "checksum", "encoding"));
    EXPECT_EQ(json["container"]["header"], "CTB");
    EXPECT_EQ(json["container"]["checksum"], "ok");
    EXPECT_EQ(json["container"]["encoding"], "ansi");
    EXPECT_EQ(json["container"]["compressed_bytes"], read("table").size() - 60);
    const Json& document = json["document"];
    EXPECT_THAT(keysOf(document), testing::UnorderedElementsAre(
                                      "description", "scale_factor", "apply_factor",
                                      "custom_lineweight_display_units", "aci_table_available",
                                      "uses_aci", "aci", "styles", "custom_lineweights"));
    EXPECT_EQ(document["description"], "B\xC3\xBCro");
    EXPECT_EQ(document["aci"][254], "Color_255");
    EXPECT_EQ(document["styles"].size(), 255U);
    EXPECT_EQ(document["custom_lineweights"].size(), 27U);
    EXPECT_THAT(keysOf(document["styles"][0]),
                ElementsAre("name", "localized_name", "description", "color", "mode_color",
                            "color_policy", "physical_pen_number", "virtual_pen_number", "screen",
                            "linepattern_size", "linetype", "adaptive_linetype", "lineweight",
                            "fill_style", "end_style", "join_style"));
}

TEST_F(CommandJsonTest, KindsAreRecognisedByContent) {
    prepare({"create", "ctb", "-o", "@colours"});
    prepare({"convert", "@colours", "-o", "@colours.json"});
    prepare({"convert", "@colours", "-o", "@shared.stb"});
    prepare({"convert", "@shared.stb", "-o", "@shared.json"});
    writeFile("misnamed", "meta{\n}\nmedia{\n}\n", PiaKind::Stb);
    writeFile("other", "x=1\n", PiaKind::Pc3);
    writeFile("empty", "", PiaKind::Ctb);
    const struct {
        const char* file;
        const char* kind;
        bool hasDocument;
    } cases[] = {
        {"colours", "ctb", true},     {"colours.json", "ctb", true}, {"shared.stb", "stb", true},
        {"shared.json", "stb", true}, {"misnamed", "pia", false},    {"other", "pia", false},
        {"empty", "pia", false},
    };
    for (const auto& [file, kind, hasDocument] : cases) {
        const std::string name = std::string("@") + file;
        const Json json = Json::parse(run({"info", "--json", name}).out);
        EXPECT_EQ(json["kind"], kind) << file;
        EXPECT_EQ(json["document"].is_null(), !hasDocument) << file;
        EXPECT_EQ(run({"info", name}).code, 0) << file;
    }
}

TEST_F(CommandJsonTest, ARejectedTableStillShowsItsContainer) {
    writeFile("broken", replaced(createdBody("stb"), " screen=", " scream="), PiaKind::Stb);
    expectRun({"info", "--json", "@broken"}, 2, _, HasSubstr("plot_style/0/screen"));
    const Json json = Json::parse(run({"info", "--json", "@broken"}).out);
    EXPECT_EQ(json["kind"], "stb");
    EXPECT_EQ(json["container"]["version"], 2);
    EXPECT_TRUE(json["document"].is_null());
}

TEST_F(CommandJsonTest, ABatchIsOneObjectALine) {
    prepare({"create", "stb", "-o", "@a"});
    for (const char* command : {"info", "check"}) {
        const auto lines = jsonLinesOf(run({command, "--json", "@a", "@a", "@a"}));
        ASSERT_EQ(lines.size(), 3U) << command;
        EXPECT_EQ(lines[2]["file"], path("a"));
    }
}

TEST_F(CommandJsonTest, CheckHasTheDocumentedKeys) {
    prepare({"create", "stb", "-o", "@a"});
    std::string bytes = read("a");
    bytes[48] = static_cast<char>(bytes[48] ^ 1);
    write("a", bytes);
    const Json json = Json::parse(run({"check", "--json", "@a"}).out);
    EXPECT_THAT(keysOf(json), ElementsAre("schema", "file", "kind", "ok", "findings", "omitted"));
    EXPECT_EQ(json["schema"], "platen.check/1");
    EXPECT_EQ(json["ok"], false);
    ASSERT_EQ(json["findings"].size(), 1U);
    const Json& finding = json["findings"][0];
    EXPECT_THAT(keysOf(finding), ElementsAre("code", "severity", "offset", "line", "path",
                                             "expected", "found", "message", "remedy"));
    EXPECT_EQ(finding["code"], "checksum-mismatch");
    EXPECT_EQ(finding["severity"], "warning");
    EXPECT_EQ(finding["offset"], 48);
    EXPECT_TRUE(finding["line"].is_null());
    const Json missing = Json::parse(run({"check", "--json", "@missing"}).out);
    EXPECT_TRUE(missing["kind"].is_null());
    EXPECT_EQ(missing["findings"][0]["code"], "file-unreadable");
}

}  // namespace
