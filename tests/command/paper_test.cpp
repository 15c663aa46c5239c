#include <memory>
#include <utility>

#include <platen/plotcfg.h>
#include "tests/command/support.h"
#include "tests/support/configurations.h"

using testing::AllOf;
using testing::ContainsRegex;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::UnorderedElementsAre;

namespace {

class CommandPaperTest : public CommandTest {
protected:
    CommandPaperTest() { prepare({"create", "pc3", "--device", "Print As PDF", "-o", "@a.pc3"}); }

    std::vector<CustomPaperSize> papersOf(std::string_view file) const {
        bool printerChanged = false;
        const std::unique_ptr<CPlotCfg3> config(
            CPlotCfg3::read(ut::decodePath(path(file)).c_str(), printerChanged));
        std::vector<CustomPaperSize> papers;
        config->getCustomPaperSizes(papers);
        return papers;
    }

    /// Every file and its bytes.
    std::vector<std::string> everything() const {
        std::vector<std::string> all;
        for (const std::string& name : names()) {
            all.push_back(name + ' ' + read(name));
        }
        return all;
    }
};

TEST_F(CommandPaperTest, PapersAreAddedAndChanged) {
    expectRun(
        {"paper", "add", "@a.pc3", "--name", "Long roll", "--size", "914x5000", "--units", "mm"}, 0,
        AllOf(HasSubstr("a.pmp, 1 custom paper\n"), HasSubstr("a.pc3, which"),
              HasSubstr("added \"Long roll\": 914.00 x 5000.00 mm\n")));
    const std::string config = read("a.pc3");
    prepare({"paper", "add", "@a.pc3", "--name", "Card", "--size", "3.5X2", "--units", "in",
             "--margins", "0.1,0.2,0.3,0.4"});
    prepare({"paper", "rename", "@a.pc3", "--name", "long ROLL", "--to", "ROLL 914"});
    prepare({"paper", "rename", "@a.pc3", "--name", "ROLL 914", "--to", "Roll 914"});
    prepare({"paper", "resize", "@a.pmp", "--name", "Roll 914", "--size", "36x100", "--units", "in",
             "--margins", "0,1,0,2"});
    prepare({"paper", "resize", "@a.pc3", "--name", "card", "--size", "4x2.5"});
    // The configuration names its parameters already: it is left alone.
    EXPECT_EQ(read("a.pc3"), config);
    const std::vector<CustomPaperSize> papers = papersOf("a.pc3");
    ASSERT_EQ(papers.size(), 2U);
    using enum OdDbPlotSettings::PlotPaperUnits;
    const CustomPaperSize roll{
        1, papers[0].globalName, L"Roll 914", kMillimeters, 914.4, 2540, 0, 25.4, 0, 50.8};
    const CustomPaperSize card{1,  papers[1].globalName, L"Card", kInches, 4, 2.5, 0.1, 0.2, 0.3,
                               0.4};
    EXPECT_THAT(papers, ElementsAre(roll, card));
    prepare({"paper", "remove", "@a.pc3", "--name", "Roll 914"});
    EXPECT_EQ(papersOf("a.pc3").size(), 1U);
    expectRun({"paper", "rename", "@a.pc3", "--name", "Card", "--to", "Card"}, 0,
              HasSubstr("nothing changed"));
}

TEST_F(CommandPaperTest, ParametersGoIntoTheirFolder) {
    std::filesystem::create_directory(path("PMP"));
    prepare({"create", "pc3", "--device", "Print As PNG", "-o", "@b.pc3"});
    prepare({"paper", "add", "@b.pc3", "--name", "Square", "--size", "100x100"});
    EXPECT_THAT(names(), UnorderedElementsAre("a.pc3", "b.pc3", "PMP"));
    EXPECT_EQ(run({"papers", "@PMP/b.pmp"}).code, 0);
    const std::vector<CustomPaperSize> papers = papersOf("b.pc3");
    ASSERT_EQ(papers.size(), 1U);
    EXPECT_EQ(papers[0].units, OdDbPlotSettings::kPixels);
}

/// The file beside the configuration is meant, wherever the command runs.
TEST_F(CommandPaperTest, RelativePathsNameOneFile) {
    for (const char* folder : {"a", "b"}) {
        std::filesystem::create_directory(path(folder));
        const CurrentFolder here(path(folder));
        prepare({"create", "pc3", "--device", "Print As PDF", "-o", "plan.pc3"});
        prepare({"paper", "add", "plan.pc3", "--name", folder, "--size", "914x5000"});
    }
    const std::string others = read("b/plan.pmp");
    const CurrentFolder here(path("b"));
    prepare({"paper", "add", "../a/plan.pc3", "--name", "more", "--size", "914x5000"});
    // As it was stored once.
    prepare({"set", "../a/plan.pc3", "meta/user_defined_model_pathname=plan.pmp", "--in-place"});
    expectWarned({"paper", "rename", "../a/plan.pc3", "--name", "more", "--to", "new"},
                 AllOf(HasSubstr("leads to two files"), ContainsRegex("a.plan\\.pmp or ")));
    EXPECT_EQ(read("b/plan.pmp"), others);
    EXPECT_EQ(papersOf("a/plan.pc3")[1].localName, L"new");
}

TEST_F(CommandPaperTest, TheCurrentPaperFollows) {
    prepare({"paper", "add", "@a.pc3", "--name", "Roll", "--size", "914x5000"});
    prepare({"set", "@a.pc3", "--in-place",
             "media/size/name=" + ut::encodeUtf8(papersOf("a.pc3")[0].globalName)});
    prepare({"paper", "resize", "@a.pc3", "--name", "Roll", "--size", "900x700", "--margins",
             "1,2,3,4"});
    EXPECT_EQ(run({"get", "@a.pc3", "media/size/media_description/media_bounds/urx",
                   "media/actual_printable_bounds_ury"})
                  .out,
              "900.000000\n696.000000\n");
    expectWarned({"paper", "remove", "@a.pc3", "--name", "Roll"},
                 HasSubstr("still set to this paper"));
}

TEST_F(CommandPaperTest, OwnPapersStayInTheConfiguration) {
    writeFile("a.pc3", withCustomPapers(run({"get", "@a.pc3"}).out, customPaper("0", "G", 1)),
              PiaKind::Pc3);
    prepare({"paper", "rename", "@a.pc3", "--name", "G", "--to", "Mine"});
    EXPECT_THAT(names(), ElementsAre("a.pc3"));
    EXPECT_EQ(papersOf("a.pc3")[0].localName, L"Mine");
    prepare({"paper", "remove", "@a.pc3", "--name", "mine"});
    EXPECT_THAT(papersOf("a.pc3"), IsEmpty());
}

TEST_F(CommandPaperTest, WhatRewritingLosesIsListed) {
    prepare({"paper", "add", "@a.pc3", "--name", "Roll", "--size", "914x5000"});
    prepare({"set", "@a.pmp", "udm/extra:num=7", "--in-place"});
    prepare({"set", "@a.pc3", "vendor:block", "--in-place"});
    const Arguments add{"paper", "add", "@a.pc3", "--name", "Card", "--size", "85x55"};
    expectWarned(add, AllOf(HasSubstr("a.pmp: warning: "), HasSubstr("udm/extra"),
                            Not(HasSubstr("vendor")), Not(HasSubstr("size"))));
    EXPECT_EQ(run({"get", "@a.pc3", "vendor"}).code, 0);
    prepare({"paper", "remove", "@a.pc3", "--name", "Card"});
    prepare({"set", "@a.pmp", "udm/media/size/0/media_group=5", "--in-place"});
    expectWarned(add, HasSubstr("orientation: \"Roll\""));
    // A JSON body comes back as a compressed one.
    EXPECT_NE(run({"convert", "@a.pmp", "-o", "@b.pmp", "--to", "json"}).code, 2);
    expectWarned({"paper", "remove", "@b.pmp", "--name", "Card"}, HasSubstr("version-3"));
}

TEST_F(CommandPaperTest, DamagedListsCanBeMended) {
    prepare({"paper", "add", "@a.pc3", "--name", "One", "--size", "100x200"});
    prepare({"paper", "add", "@a.pc3", "--name", "Two", "--size", "300x400"});
    // An entry without its description has no size; a name may hold anything.
    prepare({"set", "@a.pmp", "udm/media/size/0/media_description_name=gone",
             "udm/media/size/1/localized_name=\x1B[2J", "--in-place"});
    EXPECT_THAT(run({"papers", "@a.pmp"}).out, AllOf(HasSubstr("\nOne      0.00 x 0.00 "),
                                                     HasSubstr("\n\\x1B[2J  300.00 x 400.00")));
    prepare({"paper", "resize", "@a.pmp", "--name", "One", "--size", "11x12"});
    prepare({"paper", "rename", "@a.pmp", "--name", "\x1B[2J", "--to", "Two"});
    const std::vector<CustomPaperSize> papers = papersOf("a.pc3");
    ASSERT_EQ(papers.size(), 2U);
    EXPECT_EQ(papers[0].width, 11);
    EXPECT_EQ(papers[1].localName, L"Two");
    EXPECT_EQ(papers[1].height, 400);
    // Entries that break off are kept as far as they go, with a warning.
    prepare({"set", "@a.pmp", "--delete", "udm/media/size/1/media_group", "--in-place"});
    expectWarned({"paper", "remove", "@a.pmp", "--name", "One"}, HasSubstr("udm/media/size/1"));
    EXPECT_EQ(papersOf("a.pc3").size(), 1U);
}

TEST_F(CommandPaperTest, LimitsAreThoseOfTheParameters) {
    prepare({"paper", "add", "@a.pc3", "--name", "One", "--size", "100x200"});
    prepare({"set", "@a.pmp", "mod/media/size_max_x=914.4", "--in-place"});
    const auto expectTooLarge = [&](const char* file, const char* size) {
        expectRefused({"paper", "add", file, "--name", "N", "--size", size}, "at most");
    };
    expectTooLarge("@a.pc3", "915x5000");
    expectTooLarge("@a.pmp", "915x5000");
    expectTooLarge("@a.pmp", "914x5081");
    // Parameters of a printer have the limits that they state, and no paper is endless.
    prepare({"set", "@a.pmp", "meta/canonical_model_name=printer", "--in-place"});
    expectTooLarge("@a.pmp", "915x50000");
    expectTooLarge("@a.pmp", "914x1000001");
    prepare({"paper", "add", "@a.pmp", "--name", "N", "--size", "914x50000"});
}

TEST_F(CommandPaperTest, RefusalsChangeNoFile) {
    prepare({"paper", "add", "@a.pc3", "--name", "Roll", "--size", "914x5000"});
    prepare({"paper", "add", "@a.pc3", "--name", "Other", "--size", "914x4000"});
    // Other programs give such names.
    prepare({"set", "@a.pmp", "udm/media/size/1/localized_name=ROLL", "--in-place"});
    prepare({"create", "pc3", "--device", "Print As PNG", "-o", "@image.pc3"});
    write("image.pmp", "somebody else's");
    prepare({"create", "stb", "-o", "@a.stb"});
    prepare({"set", "@image.pc3", "meta/user_defined_model_pathname=gone.pmp", "-o", "@gone.pc3"});
    writeFile("default.pc3",
              edited(bareConfiguration, "meta{\n", "meta{\n default_system_cfg=TRUE\n"),
              PiaKind::Pc3);
    const std::pair<std::vector<std::string>, const char*> cases[] = {
        {{"add", "@a.pc3", "--name", "rolL", "--size", "1x1"}, "already; platen paper resize"},
        {{"add", "@a.pc3", "--name", "userDefinedMetric (914.00 x 5000.00MM)", "--size", "1x1"},
         "already"},
        {{"add", "@a.pc3", "--name", "\xFF", "--size", "1x1"}, "UTF-8"},
        {{"add", "@image.pc3", "--name", "N", "--size", "320001x1"}, "320000.00"},
        {{"add", "@a.pc3", "--name", "N", "--size", "1e400x1"}, "no size"},
        {{"add", "@a.pc3", "--name", "N", "--size", "1,5x1"}, "no size"},
        {{"add", "@a.pc3", "--name", "N", "--size", "1"}, "no size"},
        {{"add", "@a.pc3", "--name", "N", "--size", "1x1x1"}, "no size"},
        {{"add", "@a.pc3", "--name", "N", "--size", "9x9", "--margins", "1,1,1"}, "no margins"},
        {{"add", "@a.pc3", "--name", "N", "--size", "9x9", "--margins", "1,1,1,1,"}, "no margins"},
        {{"resize", "@a.pc3", "--name", "Rol", "--size", "2x5"}, "did you mean \"Roll\""},
        {{"resize", "@a.pc3", "--name", "roll", "--size", "2x5"}, "several papers"},
        {{"remove", "@a.pc3", "--name", "Folio"}, "there are \"Roll\", \"ROLL\""},
        {{"remove", "@image.pc3", "--name", "Folio"}, "there are none"},
        {{"add", "@image.pc3", "--name", "N", "--size", "9x9"}, "image.pmp"},
        {{"add", "@gone.pc3", "--name", "N", "--size", "9x9"}, "gone.pmp"},
        {{"add", "@default.pc3", "--name", "N", "--size", "9x9"}, "default printer"},
        {{"add", "@a.stb", "--name", "N", "--size", "9x9"}, "named plot style table"},
        {{"add", "@missing", "--name", "N", "--size", "9x9"}, "missing"},
        {{"add", "@a.pc3", "--name", "N", "--size", "9x9", "--units", "cm"}, "--units"},
    };
    const std::vector<std::string> before = everything();
    for (const auto& [arguments, message] : cases) {
        expectRefused(joined({"paper"}, arguments), message);
    }
    EXPECT_EQ(everything(), before);
}

}  // namespace
