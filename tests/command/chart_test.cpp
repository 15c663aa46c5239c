#include "tests/command/support.h"

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

using CommandChartTest = CommandTest;

TEST_F(CommandChartTest, TheNameSaysWhatIsDrawn) {
    prepare({"create", "ctb", "-o", "@a.ctb"});
    prepare({"create", "pc3", "--device", "Print As PDF", "-o", "@a.pc3"});
    const std::pair<const char*, const char*> kinds[] = {
        {"svg", "<?xml"}, {"html", "<!DOCTYPE html>"}, {"png", "\x89PNG"}, {"pdf", "%PDF-"}};
    for (const auto& [extension, begins] : kinds) {
        const std::string out = std::string("@x.") + extension;
        for (const char* in : {"@a.ctb", "@a.pc3"}) {
            expectRun({"chart", in, "-o", out}, 0, IsEmpty());
            EXPECT_THAT(read(out.substr(1)), StartsWith(begins));
        }
        // Under the name of another kind it stays what it is.
        expectRun({"chart", "@a.ctb", "-o", "@a.ctb", "--to", extension}, 2, IsEmpty(),
                  HasSubstr("is there already and is no"));
    }
    EXPECT_THAT(read("x.svg"), HasSubstr("<title id=\"chart-title\">a.pc3</title>"));
    expectRun({"chart", "@a.ctb", "-o", "-", "--title", "<Pens>"}, 0,
              AllOf(StartsWith("<?xml"), HasSubstr(">&lt;Pens&gt;</text>")));
    expectRun({"chart", "@a.ctb", "--json"}, 0, StartsWith("{\"schema\":\"platen.scene/1\""));
    prepare({"chart", "@a.ctb", "-o", "@a.txt", "--to", "svg"});
    prepare({"chart", "@a.ctb", "-o", "@a.txt", "--to", "pdf", "--force"});
    EXPECT_THAT(read("a.txt"), StartsWith("%PDF-"));
}

TEST_F(CommandChartTest, FoldersBecomeFoldersOfPictures) {
    prepare({"create", "ctb", "-o", "@a.ctb"});
    std::filesystem::create_directories(path("in/sub"));
    std::filesystem::copy(path("a.ctb"), path("in/a.ctb"));
    std::filesystem::copy(path("a.ctb"), path("in/sub/a.stb"));
    expectRun({"chart", "-r", "@in", "-o", "@out"}, 2, IsEmpty(), HasSubstr("--to svg, html"));
    expectRun({"chart", "-r", "@in", "-o", "@out", "--to", "svg"}, 0, IsEmpty());
    EXPECT_EQ(read("out/a.ctb.svg").size(), read("out/sub/a.stb.svg").size());
    expectRun({"chart", "-r", "@in", "-o", "@out", "--to", "svg"}, 2, IsEmpty(),
              HasSubstr("add --force"));
}

TEST_F(CommandChartTest, MistakesAreSaid) {
    prepare({"create", "ctb", "-o", "@a.ctb"});
    writeFile("other", "x=1\n", PiaKind::Ctb);
    const std::pair<Arguments, const char*> mistakes[] = {
        {{"chart", "@a.ctb"}, "-o pens.svg"},
        {{"chart", "@a.ctb", "-o", "@x.gif"}, "end in .svg, .html, .png or .pdf"},
        {{"chart", "@a.ctb", "-o", "@x.svg", "--paper", "A33"}, "A0, A1"},
        {{"chart", "@a.ctb", "-o", "@x.svg", "--dpi", "0"}, "--dpi"},
        {{"chart", "@a.ctb", "-o", "@x.png", "--resolution", "5000"}, "lower resolution"},
        {{"chart", "@other", "-o", "@x.svg"}, "neither styles nor papers"},
        {{"chart", "@none.ctb", "-o", "@x.svg"}, "none.ctb"}};
    for (const auto& [arguments, reason] : mistakes) {
        expectRun(arguments, 2, IsEmpty(), HasSubstr(reason));
    }
    EXPECT_FALSE(std::filesystem::exists(path("x.svg")));
}

}  // namespace
