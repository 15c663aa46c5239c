#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/command/support.h"

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;

class CommandBatchTest : public CommandTest {
protected:
    CommandBatchTest() {
        std::filesystem::create_directories(path("in/deep"));
        prepare({"create", "ctb", "-o", "@in/pens.ctb"});
        prepare({"create", "stb", "-o", "@in/deep/PENS.STB"});
        prepare({"create", "stb", "-o", "@in/no extension"});
        for (const char* other : {"in/pens.ctb.bak", "other"}) {
            std::filesystem::copy(path("in/pens.ctb"), path(other));
        }
        write("in/notes.txt", "no plotter file");
    }

    /// The lines without the folder of the test, with slashes as here.
    std::string said(std::string lines) const {
        for (std::size_t at = 0; (at = lines.find(path("")), at) != std::string::npos;) {
            lines.erase(at, path("").size());
        }
        std::ranges::replace(lines, '\\', '/');
        return lines;
    }
};

TEST_F(CommandBatchTest, FilesAreFoundAndSpokenOfInTheirOrder) {
    const std::string wrong = "PIAFILEVERSION_2.0, broken";
    write("in/a.pmp", wrong);
    // So many that threads run ahead of each other.
    for (int number = 100; number < 180; ++number) {
        const std::string name = "in/b" + std::to_string(number) + ".ctb";
        std::filesystem::copy(path("in/pens.ctb"), path(name));
    }
    const CommandResult one = run({"check", "-r", "@in", "--jobs", "1"});
    const CommandResult all = run({"check", "-r", "@in", "--jobs", "7"});
    EXPECT_EQ(all.out, one.out);
    EXPECT_EQ(all.err, one.err);
    EXPECT_EQ(all.code, 2);
    EXPECT_THAT(said(all.out).substr(0, 20), HasSubstr("in/a.pmp: error"));
    EXPECT_THAT(all.out, AllOf(HasSubstr("no extension: ok"), HasSubstr("PENS.STB: ok"),
                               Not(HasSubstr(".bak")), Not(HasSubstr("notes"))));

    EXPECT_EQ(run({"info", "-r", "@in/deep", "--json"}).code, 0);
    std::filesystem::create_directory(path("empty"));
    EXPECT_EQ(run({"check", "-r", "@empty"}).code, 1);
    expectRefused({"check", "@in"}, "add -r");
    expectRefused({"check", "-", "@other"}, "standard input (-) can only be the one file");

    write("list", path("other") + "\r\n\n" + path("gone") + "\n" + path("in/pens.ctb"));
    const CommandResult listed = run({"check", "@@list"});
    EXPECT_EQ(listed.code, 2);
    EXPECT_THAT(said(listed.out), AllOf(HasSubstr("other: ok"), HasSubstr("pens.ctb: ok")));
    EXPECT_THAT(listed.err, HasSubstr("gone: "));
    expectRefused({"check", "@@none"}, "the list of files cannot be read");
}

TEST_F(CommandBatchTest, AStreamStandsForAFile) {
    const std::string file = read("in/pens.ctb");
    EXPECT_EQ(run({"check", "-"}, false, file).out, "-: ok, colour-dependent plot style table\n");
    EXPECT_THAT(run({"info", "-"}, false, file).out, HasSubstr("255"));
    const CommandResult changed = run({"set", "-", "description=new", "-o", "-"}, false, file);
    ASSERT_EQ(changed.code, 0) << changed.err;
    EXPECT_EQ(run({"get", "-", "description"}, false, changed.out).out, "new\n");
    EXPECT_EQ(run({"convert", "-", "-o", "-", "--to", "text"}, false, file).out,
              run({"get", "@in/pens.ctb"}).out);
    EXPECT_EQ(run({"check", "-", "--max-body", "100"}, false, file).code, 2);
    expectRefused({"set", "-", "description=new", "--in-place"}, "cannot be changed in place");
}

TEST_F(CommandBatchTest, ManyFilesAreChangedOrConverted) {
    const CommandResult dry =
        run({"set", "-r", "@in", "description=new", "--in-place", "--dry-run"});
    EXPECT_THAT(said(dry.out), HasSubstr("in/pens.ctb: would change"));
    EXPECT_EQ(run({"get", "@in/pens.ctb", "description"}).out, "\n");
    expectRefused({"set", "-r", "@in", "description=new", "-o", "@x"}, "add --in-place");
    write("in/z.ctb", "broken");
    EXPECT_EQ(run({"set", "-r", "@in", "description=new", "--in-place"}).code, 2);
    for (const char* name : {"@in/pens.ctb", "@in/deep/PENS.STB", "@in/no extension"}) {
        EXPECT_EQ(run({"get", name, "description"}).out, "new\n");
    }
    EXPECT_EQ(run({"get", "@in/pens.ctb.bak", "description"}).out, "\n");
    std::filesystem::remove(path("in/z.ctb"));

    const std::vector<std::string> convert{"convert", "-r", "@in", "-o", "@out", "--to", "json"};
    EXPECT_EQ(run(convert).code, 0);
    EXPECT_EQ(run({"get", "@out/deep/PENS.json", "description"}).out, "new\n");
    EXPECT_THAT(run(convert).err, HasSubstr("add --force"));
    EXPECT_EQ(run(joined(convert, {"--force"})).code, 0);
    std::filesystem::copy(path("in/pens.ctb"), path("in/pens.stb"));
    EXPECT_THAT(run(joined(convert, {"--force"})).err, HasSubstr("nothing was written"));
    expectRefused({"convert", "-r", "@in", "-o", "@out"}, "say what to write");
}

}  // namespace
