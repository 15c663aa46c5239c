#include <gmock/gmock.h>

#include "tests/command/support.h"
#include "tests/support/configurations.h"

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

/// Two tables: b.ctb has other settings for three colours.
class CommandDiffTest : public CommandTest {
protected:
    void SetUp() override {
        std::filesystem::create_directories(path("old/deep"));
        std::filesystem::create_directories(path("new/deep"));
        prepare({"create", "ctb", "-o", "@a.ctb"});
        set("a.ctb", "b.ctb",
            {"plot_style/0/lineweight=10", "plot_style/1/lineweight=10", "plot_style/8/screen=5"});
    }

    void set(const std::string& from, const std::string& to, const Arguments& assignments) const {
        prepare(joined({"set", "@" + from, "-o", "@" + to}, assignments));
    }
    void copy(const std::string& from, const std::string& to) const { write(to, read(from)); }
};

TEST_F(CommandDiffTest, FilesDifferOrNot) {
    prepare({"convert", "@a.ctb", "-o", "@a.json"});
    prepare({"convert", "@b.ctb", "-o", "@b.stb"});
    writeFile("c.pc3", fullConfiguration, PiaKind::Pc3);
    const struct {
        Arguments arguments;
        int code;
        std::string out;
    } cases[] = {
        {{"@a.ctb", "@a.ctb"}, 0, ""},
        {{"@a.ctb", "@b.ctb"},
         1,
         "Color 1-2: lineweight 0 mm -> 0.35 mm\nColor 9: screening 100 % -> 5 %\n"},
        {{"@a.ctb", "@b.ctb", "--only", "screen,description"},
         1,
         "Color 9: screening 100 % -> 5 %\n"},
        {{"@a.ctb", "@b.ctb", "--only", "description"}, 0, ""},
        {{"@a.ctb", "@a.json"}, 0, "Container: version 2 -> 3\n"},
        {{"@b.ctb", "@b.stb"}, 0, "Container: header CTB -> STB\n"},
    };
    for (const auto& [arguments, code, out] : cases) {
        const CommandResult result = run(joined({"diff"}, arguments));
        EXPECT_EQ(result.code, code) << result.err;
        EXPECT_EQ(result.out, out);
    }
    EXPECT_EQ(run({"diff", "@a.ctb", "@c.pc3"}).code, 1);
    expectRefused({"diff", "@a.ctb", "@b.ctb", "--only", "sreen"}, "did you mean \"screen\"?");
    expectRefused({"diff", "@a.ctb", "@none.ctb"}, "none.ctb");
    expectRefused({"diff", "@a.ctb", "@old"}, "no folder");
}

TEST_F(CommandDiffTest, FoldersSayWhatBecameOfFiles) {
    for (const char* name : {"old/same.ctb", "new/same.ctb", "old/deep/x.ctb", "old/first.ctb",
                             "new/deep/second.ctb"}) {
        copy("a.ctb", name);
    }
    copy("b.ctb", "new/deep/x.ctb");
    copy("b.ctb", "old/gone.ctb");
    write("old/notes.txt", "notes");
    prepare({"create", "stb", "-o", "@new/more.stb"});
    const CommandResult result = run({"diff", "-r", "@old", "@new"});
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.out, "removed: " + path("old/gone.ctb") + "\nadded: " + path("new/more.stb") +
                              "\nrenamed: " + path("old/first.ctb") + " -> " +
                              path("new/deep/second.ctb") + "\nchanged: " + path("old/deep/x.ctb") +
                              "\n  Color 1-2: lineweight 0 mm -> 0.35 mm\n"
                              "  Color 9: screening 100 % -> 5 %\n");
    EXPECT_THAT(run({"diff", "-r", "@old", "@new", "--json"}).out,
                AllOf(HasSubstr("{\"schema\":\"platen.diff-file/1\",\"change\":\"renamed\""),
                      HasSubstr("{\"schema\":\"platen.diff/1\""), Not(HasSubstr("same.ctb"))));
    EXPECT_EQ(run({"diff", "-r", "@old", "@old"}).code, 0);
    write("new/same.ctb", "damaged");
    EXPECT_EQ(run({"diff", "-r", "@old", "@new"}).code, 2);
}

TEST_F(CommandDiffTest, ChangesApplyToOtherFiles) {
    write("changes", run({"diff", "@a.ctb", "@b.ctb", "--json"}).out);
    copy("a.ctb", "old/deep/x.ctb");
    set("a.ctb", "old/other.ctb", {"plot_style/8/screen=50"});
    writeFile("old/c.pc3", fullConfiguration, PiaKind::Pc3);
    const std::string config = read("old/c.pc3");

    CommandResult result = run({"apply", "@changes", "-r", "@old", "--dry-run"});
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(read("old/deep/x.ctb"), read("a.ctb"));
    result = run({"apply", "@changes", "-r", "@old", "--in-place"});
    EXPECT_EQ(result.code, 1);
    EXPECT_THAT(result.out, AllOf(HasSubstr("x.ctb: 3 changes made, 0 already there, 0 do not fit"),
                                  HasSubstr("other.ctb: 2 changes made, 0 already there, 1 does")));
    EXPECT_THAT(result.err, HasSubstr("does not fit: Color 9: screening 100 % -> 5 %: "
                                      "it is 50 %, not 100 %"));
    EXPECT_EQ(run({"diff", "@b.ctb", "@old/deep/x.ctb"}).code, 0);
    EXPECT_EQ(read("old/c.pc3"), config);

    const std::string before = read("old/deep/x.ctb");
    EXPECT_EQ(run({"apply", "@changes", "@old/deep/x.ctb", "--in-place"}).code, 0);
    EXPECT_EQ(read("old/deep/x.ctb"), before);
    // Whoever names a file means it.
    EXPECT_EQ(run({"apply", "@changes", "@old/c.pc3", "--in-place"}).code, 1);
    write("changes", "nonsense");
    expectRefused({"apply", "@changes", "@old/c.pc3", "--in-place"}, "not one JSON object");
    expectRefused({"apply", "@none", "@old/c.pc3", "--in-place"}, "none");
    // A style more or less makes a table for colours no table.
    prepare({"create", "stb", "-o", "@one.stb"});
    set("one.stb", "two.stb", {"plot_style/0/name=Other"});
    write("changes", replaced(replaced(run({"diff", "@one.stb", "@two.stb", "--json"}).out,
                                       "\"removed\"", "\"added\""),
                              "\"before\":[{", "\"after\":[{"));
    EXPECT_EQ(run({"apply", "@changes", "@a.ctb", "--in-place"}).code, 2);
}

TEST_F(CommandDiffTest, StatesMerge) {
    set("a.ctb", "theirs.ctb", {"plot_style/1/screen=7", "plot_style/8/screen=6"});
    CommandResult result = run({"merge", "@a.ctb", "@b.ctb", "@theirs.ctb", "-o", "@out.ctb"});
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.out, path("b.ctb") + ": 1 change taken, 1 conflict\n");
    EXPECT_THAT(result.err, HasSubstr("conflict: Color 9: screening 100 % -> 6 %: it is 5 %"));
    EXPECT_EQ(run({"diff", "@b.ctb", "@out.ctb"}).out, "Color 2: screening 100 % -> 7 %\n");

    set("a.ctb", "theirs.ctb", {"description=Theirs"});
    result = run({"merge", "@a.ctb", "@b.ctb", "@theirs.ctb", "--path", "plans/pens.ctb"});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.out, "plans/pens.ctb: 1 change taken, 0 conflicts\n");
    EXPECT_EQ(run({"get", "@b.ctb", "description"}).out, "Theirs\n");
    EXPECT_EQ(run({"get", "@b.ctb", "plot_style/8/screen"}).out, "5\n");

    // Both have added the file.
    write("empty", "");
    EXPECT_EQ(run({"merge", "@empty", "@b.ctb", "@theirs.ctb", "-o", "@out.ctb"}).code, 1);
    EXPECT_EQ(read("out.ctb"), read("b.ctb"));
    writeFile("c.pc3", fullConfiguration, PiaKind::Pc3);
    expectRefused({"merge", "@a.ctb", "@b.ctb", "@c.pc3"}, "cannot be merged");
}

}  // namespace
