#include <algorithm>

#include <platen/papers.h>
#include "tests/command/json_lines.h"
#include "tests/support/configurations.h"

using testing::AllOf;
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
        std::size_t count;
        const char* first;
    } devices[] = {
        {"pdf", wut::cPdfPapersCount,
         R"({"source":"pdf","name":"A0","global_name":"A0","units":"mm","width":841.0,
             "height":1189.0,"width_mm":841.0,"height_mm":1189.0,"width_in":33.110236,
             "height_in":46.811024,"margins":{"left":0.0,"bottom":0.0,"right":0.0,"top":0.0}})"},
        {"image", wut::cImagePapersCount,
         R"({"source":"image","units":"px","width":640.0,"height":480.0,"width_mm":null,
             "height_mm":null,"width_in":null,"height_in":null,"kept_in":null})"},
        {"none", wut::cNonePapersCount,
         R"({"source":"none","units":"in","width":8.5,"height":11.0,"width_mm":215.9,
             "height_mm":279.4,"width_in":8.5,"height_in":11.0,
             "margins":{"left":0.25,"bottom":0.25,"right":0.25,"top":0.25}})"},
    };
    for (const auto& [device, count, first] : devices) {
        const std::vector<Json> lines = jsonLines({"papers", "--device", device});
        ASSERT_EQ(lines.size(), count);
        Json shown = lines[0];
        shown.update(Json::parse(first));
        EXPECT_EQ(lines[0], shown);
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
        customPaper("0", "B\xC3\xBCro", 0, "10", "0.5") + customPaper("1", "H", 9);
    writeFile("a.pc3", withCustomPapers(run({"get", "@a.pc3"}).out, own), PiaKind::Pc3);
    prepare({"paper", "add", "@a.pc3", "--name", "Roll", "--size", "914x5000"});
    const std::vector<Json> lines = jsonLines({"papers", "@a.pc3"});
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[0]["kept_in"], "configuration");
    EXPECT_EQ(lines[0]["width_mm"], 254.0);
    EXPECT_EQ(lines[0]["margins"]["top"], 0.5);
    EXPECT_EQ(lines[1]["units"], "?");
    EXPECT_EQ(lines[2]["kept_in"], "parameters");
    EXPECT_EQ(lines[2]["width"], 914.0);
    EXPECT_EQ(jsonLines({"papers", "@a.pmp"}).size(), 1U);
    // Columns are aligned by characters, and stay apart from each other.
    expectRun({"papers", "@a.pc3"}, 0,
              AllOf(HasSubstr("\nB\xC3\xBCro local  254.00 x 508.00   10.00 x 20.00 "),
                    HasSubstr("\nRoll        914.00 x 5000.00  35.98 x 196.85 ")));
    // Without the parameters the configuration's own papers are still there.
    std::filesystem::remove(path("a.pmp"));
    expectRun({"papers", "@a.pc3"}, 3, AllOf(HasSubstr("254.00 x 508.00"), Not(HasSubstr("Roll"))),
              HasSubstr("user_defined_model_pathname"));
}

}  // namespace
