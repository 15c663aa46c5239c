#include <gmock/gmock.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include <platen/papers.h>
#include "tests/command/json_lines.h"
#include "tests/command/support.h"
#include "tests/support/configurations.h"

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

using Json = nlohmann::json;

class CommandPapersTest : public CommandTest {
protected:
    std::vector<Json> jsonLines(std::vector<std::string> arguments) const {
        arguments.emplace_back("--json");
        const std::vector<Json> lines = jsonLinesOf(run(arguments));
        for (const Json& line : lines) {
            EXPECT_EQ(line["schema"], "platen.papers/1");
        }
        return lines;
    }
};

TEST_F(CommandPapersTest, DevicesListTheirTables) {
    const struct {
        const char* device;
        const wut::PaperSizeInfo* papers;
        std::size_t count;
    } devices[] = {{"pdf", wut::cPdfPapers, wut::cPdfPapersCount},
                   {"image", wut::cImagePapers, wut::cImagePapersCount},
                   {"none", wut::cNonePapers, wut::cNonePapersCount}};
    for (const auto& [device, papers, count] : devices) {
        const std::vector<Json> lines = jsonLines({"papers", "--device", device});
        ASSERT_EQ(lines.size(), count);
        for (std::size_t index = 0; index < count; ++index) {
            const wut::PaperSizeInfo& paper = papers[index];
            const Json& line = lines[index];
            EXPECT_EQ(line["source"], device);
            EXPECT_EQ(line["name"], ut::encodeUtf8(paper.displayName));
            EXPECT_EQ(line["global_name"], ut::encodeUtf8(paper.canonicalName));
            EXPECT_NEAR(line["width"].get<double>(), paper.width, 1e-6);
            EXPECT_NEAR(line["margins"]["top"].get<double>(), paper.top, 1e-6);
            EXPECT_TRUE(line["kept_in"].is_null());
            if (paper.units == OdDbPlotSettings::kPixels) {
                EXPECT_EQ(line["units"], "px");
                EXPECT_TRUE(line["width_mm"].is_null() && line["height_in"].is_null());
            } else {
                const double height = line["height_mm"].get<double>();
                EXPECT_NEAR(line["height_in"].get<double>() * 25.4, height, 1e-4);
                const bool inches = paper.units == OdDbPlotSettings::kInches;
                EXPECT_NEAR(height, paper.height * (inches ? 25.4 : 1), 1e-4);
            }
        }
        const std::string text = run({"papers", "--device", device}).out;
        EXPECT_EQ(static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')), count + 1);
    }
    EXPECT_THAT(run({"papers", "--device", "pdf"}).out,
                HasSubstr("\nANSI A                                     215.90 x 279.40    8.50 x "
                          "11.00   none\n"));
    EXPECT_THAT(run({"papers", "--device", "image"}).out, HasSubstr("  1024 x 768   none\n"));
}

TEST_F(CommandPapersTest, TheCatalogueListsIds) {
    const std::vector<Json> lines = jsonLines({"papers", "--catalogue"});
    ASSERT_EQ(lines.size(), 118U);
    EXPECT_EQ(lines[8]["id"], 9);
    EXPECT_EQ(lines[8]["name"], "A4");
    EXPECT_EQ(lines[8]["units"], "mm");
    EXPECT_THAT(run({"papers", "--catalogue"}).out, HasSubstr("\n9    A4         "));
}

TEST_F(CommandPapersTest, FilesListTheirOwnPapers) {
    prepare({"create", "pc3", "--device", "Print As PDF", "-o", "@a.pc3"});
    EXPECT_THAT(run({"papers", "@a.pc3"}).out, HasSubstr("no custom papers"));
    EXPECT_THAT(jsonLines({"papers", "@a.pc3"}), IsEmpty());
    const std::string own =
        " custom_papers{\n  0{\n   global_name=\"G\n   local_name=\"Gr\xC3\xB6\xC3\x9F"
        "e\n   units=0\n   width=10\n   height=20\n   left=0\n   bottom=0\n   right=0\n   "
        "top=0.5\n  }\n  1{\n   global_name=\"H\n   local_name=\"H\n   units=9\n   width=1\n   "
        "height=2\n   left=0\n   bottom=0\n   right=0\n   top=0\n  }\n }\n";
    writeFile("a.pc3", edited(run({"get", "@a.pc3"}).out, "}\nio{", own + "}\nio{"), PiaKind::Pc3);
    prepare({"paper", "add", "@a.pc3", "--name", "Roll", "--size", "914x5000"});
    const std::vector<Json> lines = jsonLines({"papers", "@a.pc3"});
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[0]["kept_in"], "configuration");
    EXPECT_EQ(lines[0]["width_mm"], 254.0);
    EXPECT_EQ(lines[1]["units"], "?");
    EXPECT_EQ(lines[2]["kept_in"], "parameters");
    EXPECT_EQ(lines[2]["width"], 914.0);
    EXPECT_EQ(jsonLines({"papers", "@a.pmp"}).size(), 1U);
    // Columns are aligned by characters, and stay apart from each other.
    const std::string table = run({"papers", "@a.pc3"}).out;
    EXPECT_THAT(table, HasSubstr("\nGr\xC3\xB6\xC3\x9F"
                                 "e  254.00 x 508.00   10.00 x 20.00 "));
    EXPECT_THAT(table, HasSubstr("\nRoll   914.00 x 5000.00  35.98 x 196.85 "));
    // Without the parameters the configuration's own papers are still there.
    std::filesystem::remove(path("a.pmp"));
    const CommandResult result = run({"papers", "@a.pc3"});
    EXPECT_EQ(result.code, 3);
    EXPECT_THAT(result.out, HasSubstr("254.00 x 508.00"));
    EXPECT_THAT(result.out, Not(HasSubstr("Roll")));
    EXPECT_THAT(result.err, HasSubstr("user_defined_model_pathname"));
}

}  // namespace
