#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "tests/command/support.h"
#include "tests/support/configurations.h"

using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;
using Json = nlohmann::json;

namespace {

const std::string pmpKey = "user_defined_model_pathname=\"";

class CommandCheckDocuments : public CommandTest {
protected:
    static std::string sound() {
        return edited(fullConfiguration, pmpKey + "C:\\Plotters\\PMP Files\\no such.pmp", pmpKey);
    }
    static std::string soundPdf() {
        return edited(sound(), "canonical_model_name=\"Model", "canonical_model_name=\"pdf");
    }
    static std::string soundParameters() {
        return edited(fullParameters, "  default_size=\"A4\n", "");
    }

    /// The body is sound but for one finding.
    void expectFinding(const std::string& body, int code, const std::string& expected) {
        writeFile("file", body, PiaKind::Pc3);
        const CommandResult result = run({"check", "@file"});
        EXPECT_EQ(result.code, code) << result.out;
        EXPECT_THAT(result.out, HasSubstr(expected));
        EXPECT_EQ(std::count(result.out.begin(), result.out.end(), '\n'), 1) << result.out;
        EXPECT_THAT(result.err, IsEmpty());
    }

    struct Case {
        std::string from;
        std::string to;
        int code;
        const char* word;
        const char* path;
        /// What the line of the body begins with that the finding names.
        const char* line;
    };
    void expectAll(const std::string& body, const std::vector<Case>& cases) {
        for (const auto& [from, to, code, word, path, line] : cases) {
            SCOPED_TRACE(to);
            const std::string spoiled = edited(body, from, to);
            write("file", fileAround(spoiled, PiaKind::Pc3));
            const CommandResult result = run({"check", "--json", "@file"});
            EXPECT_EQ(result.code, code);
            const Json findings = Json::parse(result.out)["findings"];
            ASSERT_EQ(findings.size(), 1U) << result.out;
            EXPECT_EQ(findings[0]["code"], word);
            EXPECT_EQ(findings[0]["path"], path);
            EXPECT_EQ(findings[0]["severity"], code == 2 ? "error" : "warning");
            EXPECT_THAT(lineOf(spoiled, findings[0]["line"]), StartsWith(line));
        }
    }
    static std::string lineOf(const std::string& body, std::size_t number) {
        std::istringstream lines(body);
        std::string line;
        for (; number > 0 && std::getline(lines, line); --number) {
        }
        return line;
    }
};

TEST_F(CommandCheckDocuments, SoundOnesAreOk) {
    for (const std::string& body : {sound(), soundPdf(), bareConfiguration}) {
        expectFinding(body, 0, "ok, plot configuration");
    }
    for (const std::string& body : {soundParameters(), bareParameters}) {
        expectFinding(body, 0, "ok, plot model parameters");
    }
}

TEST_F(CommandCheckDocuments, BrokenConfigurationsAreNamed) {
    expectAll(
        sound(),
        {
            {" toolkit_version=1\n", "", 2, "key-missing", "meta/toolkit_version", "meta{"},
            {"toolkit_version=1", "toolkit_version=\"1", 2, "key-missing", "meta/toolkit_version",
             " toolkit_version="},
            {"  group=15", "  group=many", 2, "value-invalid", "media/size/group", "  group=many"},
            // Optional parts cost themselves only.
            {"  collating_type=1\n", "", 3, "block-dropped", "media/destination", " destination{"},
            {"   width=36.000000", "   width=wide", 3, "entry-partly-read", "media/custom_papers/0",
             "  0{"},
            {" custom_papers{", " custom_papers=1\n custom_papers{", 3, "item-not-carried",
             "media/custom_papers", " custom_papers=1"},
            {"  name=\"Note\n", "", 3, "block-dropped", "custom", "custom{"},
            {"  name=\"Note\n  value=\"text", "  value=\"text\n  name=\"Note", 3, "block-dropped",
             "custom", "custom{"},
            {"  value=\"text\n", "  value{\n  }\n", 3, "block-dropped", "custom", "custom{"},
            {"  value=\"text\n", "  value=\"text\n  more=1\n", 3, "block-dropped", "custom",
             "custom{"},
            {"ole_max=1", "ole_max=x", 3, "value-not-read", "res_color_mem/ole_max", " ole_max=x"},
            {"\\00FFaB\\", "\\00FFa\\", 3, "binary-odd-length", "custom/2/value",
             "  value=\\00FFa"},
            {"\\00FFaB\\", "\\00FFag\\", 3, "binary-not-hex", "custom/2/value", "  value=\\00FFag"},
            {"dmSize\n  value=220", "dmDriverExtra\n  value=4", 3, "private-data-length", "custom",
             "custom{"},
            {"  value=220\n }\n", "  value=220\n }\n z{\n  name=\"PdfExport\n  value=TRUE\n }\n", 3,
             "item-not-carried", "custom/z", " z{"},
        });
}

TEST_F(CommandCheckDocuments, SenselessPapersAreNamed) {
    const char* chosen = "media/size/media_description";
    const char* own = "media/custom_papers/0";
    expectAll(
        soundPdf(),
        {
            {"    ury=297.000000", "    ury=0", 3, "paper-without-size", chosen,
             "  media_description{"},
            {"   printable_bounds_urx=205", "   printable_bounds_urx=211", 3, "paper-margins",
             chosen, "  media_description{"},
            {"    ury=297.000000", "    ury=5081", 3, "paper-too-large", chosen,
             "  media_description{"},
            {"\"ISO_A4_(210.00_x_297.00_MM)", "\"Napkin", 3, "paper-unknown", "media/size/name",
             "  name=\"Napkin"},
            {"   width=36.", "   width=0.", 3, "paper-without-size", own, "  0{"},
            {"   width=36.", "   width=200.1", 3, "paper-too-large", own, "  0{"},
            {"   left=0.", "   left=40.", 3, "paper-margins", own, "  0{"},
            {"   units=0", "   units=3", 3, "paper-units", "media/custom_papers/0/units",
             "   units=3"},
            {"  0{\n   global_name",
             "  x{\n   global_name=\"Roll\n   local_name=\"\n   units=1\n   width=1\n   height=1\n"
             "   left=0\n   bottom=0\n   right=0\n   top=0\n  }\n  0{\n   global_name",
             3, "paper-name-duplicate", "media/custom_papers/0/global_name",
             "   global_name=\"Roll"},
        });
    // A printer's papers and limits are not known.
    expectFinding(edited(sound(), "\"ISO_A4_(210.00_x_297.00_MM)", "\"Napkin"), 0, "ok");
    expectFinding(edited(sound(), "    ury=297.000000", "    ury=500000"), 0, "ok");
}

TEST_F(CommandCheckDocuments, BrokenParametersAreNamed) {
    const std::string body = soundParameters();
    const std::string user =
        body.substr(body.find("udm{"), body.find("hidden{") - body.find("udm{"));
    const auto edit = [&](const std::string& from, const std::string& to) {
        return edited(body, user, edited(user, from, to));
    };
    // 0 is no limit.
    const std::string narrow = edited(body, "size_max_x=900", "size_max_x=99.5");
    writeFile("narrow", edited(narrow, "size_max_y=5000", "size_max_y=0"), PiaKind::Pc3);
    const CommandResult result = run({"check", "@narrow"});
    EXPECT_EQ(result.code, 3);
    EXPECT_THAT(result.out, HasSubstr("[paper-too-large]"));
    EXPECT_THAT(result.out, HasSubstr("at mod/media/description/0"));
    EXPECT_THAT(result.out, HasSubstr("at udm/media/description/0"));
    expectFinding(edited(body, "size_max_x=900", "size_max_x=0"), 0, "ok");
    expectFinding(edit("media_description_name=\"D", "media_description_name=\"E"), 3,
                  "[paper-without-size] a paper names a description that is not there");
    expectFinding(edit("media_bounds_urx=100", "media_bounds_urx=0"), 3,
                  "at udm/media/description/0, expected a width and a height for D");
    expectFinding(edit("   printable_bounds_llx=1", "   printable_bounds_llx=-1"), 3,
                  "[paper-margins]");
    expectFinding(edit("  _y=0.999000\n", ""), 2, "at udm/calibration/_y");
    expectFinding(edit("  description{", "  descriptions{"), 3, "[block-dropped]");
    expectFinding(edit("    media_group=15\n", ""), 3, "[entry-partly-read]");
    expectFinding(edited(body, "hidden{\n media{", "hidden{\n medium{"), 3, "at hidden,");
    expectFinding(fullParameters, 3, "[default-paper-unknown]");
}

TEST_F(CommandCheckDocuments, ThePmpOfAConfigurationIsLookedFor) {
    const std::string body = edited(soundPdf(), pmpKey, pmpKey + "C:\\x\\own.pmp");
    expectFinding(body, 3, "[pmp-missing]");
    const std::string out = run({"check", "@file"}).out;
    EXPECT_THAT(out, HasSubstr(path("PMP")));
    EXPECT_THAT(out, HasSubstr("found \"C:\\x\\own.pmp\""));

    std::filesystem::create_directory(path("PMP"));
    writeFile("PMP/own.pmp", edited(bareParameters, "udm{", "udn{"), PiaKind::Pc3);
    expectFinding(body, 3, "[pmp-unreadable]");
    writeFile("PMP/own.pmp", fullParameters, PiaKind::Pc3);
    // 36 inches are more than the 900 mm of the PMP.
    expectFinding(body, 3, "[paper-too-large]");
    expectFinding(edited(body, "   width=36.", "   width=35."), 0, "ok");
    // A paper of the PMP is a paper of the device.
    expectFinding(
        edited(edited(body, "   width=36.", "   width=35."), "\"ISO_A4_(210.00_x_297.00_MM)",
               "\"UserDefinedMetric (100.00 x 200.00MM)"),
        0, "ok");
}

TEST_F(CommandCheckDocuments, LinesCountEveryLineOfTheBody) {
    // A binary value goes on over reads and lines, whatever the lines look like.
    const std::string value = "\\" + std::string(1200, '0') + "\nio{\n}\ncustom{\n\\";
    const std::string body =
        edited(edited(sound(), "\\00FFaB\\", value), "value=FALSE", "value=\\1\\");
    write("file", fileAround(body, PiaKind::Pc3));
    const auto odd = [&](const char* file) {
        const Json json = Json::parse(run({"check", "--json", file}).out);
        for (const Json& finding : json["findings"]) {
            if (finding["code"] == "binary-odd-length") {
                return finding;
            }
        }
        return Json();
    };
    EXPECT_EQ(odd("@file")["path"], "custom/5/value");
    EXPECT_EQ(lineOf(body, odd("@file")["line"]), "  value=\\1\\");
    // Version 3 has no lines.
    EXPECT_EQ(run({"convert", "@file", "-o", "@file.json"}).code, 3);
    EXPECT_EQ(odd("@file.json")["path"], "custom/5/value");
    EXPECT_TRUE(odd("@file.json")["line"].is_null());
}

TEST_F(CommandCheckDocuments, TheSizeLimitCanBeRaised) {
    writeFile("file", sound(), PiaKind::Pc3);
    for (const char* command : {"info", "check", "get"}) {
        const CommandResult refused = run({command, "--max-body", "2kb", "@file"});
        EXPECT_EQ(refused.code, 2) << command;
        EXPECT_THAT(refused.out + refused.err, HasSubstr("--max-body 1GB")) << command;
        EXPECT_EQ(run({command, "--max-body", "3KB", "@file"}).code, 0) << command;
    }
    EXPECT_EQ(run({"convert", "--max-body", "100", "@file", "-o", "@b.json"}).code, 2);
    EXPECT_EQ(run({"convert", "--max-body", "3000", "@file", "-o", "@b.txt"}).code, 0);
    EXPECT_EQ(run({"info", "--max-body", "lots", "@file"}).code, 2);
    EXPECT_EQ(run({"info", "--max-body", "-1", "@file"}).code, 2);
}

}  // namespace
