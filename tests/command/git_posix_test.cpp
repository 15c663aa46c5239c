#include <gmock/gmock.h>

#include <cstdlib>

#include "tests/command/support.h"

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

namespace {

/// A repository whose git knows nothing of the machine's settings, and has those of docs/git.md.
class CommandGitTest : public CommandTest {
protected:
    void SetUp() override {
        ASSERT_EQ(shell("git init -q -b main . && "
                        "git config user.name Tester && git config user.email t@example.org && " +
                        settings()),
                  0)
            << output();
        write("repository/.gitattributes", attributes());
        write("setting", "");
        prepare({"create", "ctb", "-o", "@repository/pens.ctb"});
        commit("base");
    }

    /// Runs a script in the repository; `output` is what it printed.
    int shell(const std::string& script) const {
        std::filesystem::create_directories(path("repository"));
        const std::string program = std::filesystem::path(PLATEN_COMMAND).parent_path().string();
        write("script", "cd '" + path("repository") + "' && PATH='" + program +
                            "':\"$PATH\" HOME=" + path("") + " GIT_CONFIG_NOSYSTEM=1 && " +
                            "export PATH HOME GIT_CONFIG_NOSYSTEM && " + script);
        // NOLINTNEXTLINE(cert-env33-c,concurrency-mt-unsafe): git is what is tried.
        return std::system(("sh '" + path("script") + "' >'" + path("output") + "' 2>&1").c_str());
    }
    std::string output() const { return read("output"); }

    void commit(const std::string& message) const {
        ASSERT_EQ(shell("git add -A && git commit -q -m '" + message + "'"), 0) << output();
    }
    void set(const Arguments& assignments) const {
        prepare(joined({"set", "@repository/pens.ctb", "--in-place"}, assignments));
    }

private:
    static std::string documentation() {
        return readBytes(std::filesystem::path(PLATEN_SOURCES) / "docs" / "git.md");
    }
    /// The first block that begins with `start`, of the documentation's own words.
    static std::string block(const std::string& start) {
        const std::string text = documentation();
        const std::size_t begin = text.find("```\n" + start) + 4;
        return text.substr(begin, text.find("```", begin) - begin);
    }
    static std::string attributes() { return block("*.ctb"); }
    static std::string settings() { return block("git config --global diff.platen.textconv"); }

protected:
    static std::string externalDiff() { return block("git config --global diff.platen.command"); }
};

TEST_F(CommandGitTest, TextsShowItemsAndDifferencesTheirMeaning) {
    set({"plot_style/0/screen=50", "plot_style/1/screen=50"});
    ASSERT_EQ(shell("git diff"), 0);
    EXPECT_THAT(output(),
                AllOf(HasSubstr("-  screen=100\n+  screen=50"), Not(HasSubstr("Binary"))));
    // A file that can be used in spite of a fault is shown, too.
    std::string bytes = read("repository/pens.ctb");
    bytes[48] = static_cast<char>(bytes[48] + 1);
    write("repository/pens.ctb", bytes);
    ASSERT_EQ(shell("git diff"), 0) << output();
    EXPECT_THAT(output(), HasSubstr("+  screen=50"));

    ASSERT_EQ(shell(externalDiff() + "git diff"), 0) << output();
    EXPECT_THAT(output(), EndsWith("pens.ctb\nColor 1-2: screening 100 % -> 50 %\n"));
    prepare({"create", "ctb", "-o", "@repository/new.ctb"});
    ASSERT_EQ(shell("git add -A && git diff --cached"), 0) << output();
    EXPECT_THAT(output(), HasSubstr("new.ctb\ndescription: added \"\"\n"));
}

TEST_F(CommandGitTest, BranchesMergeByMeaning) {
    ASSERT_EQ(shell("git checkout -q -b office"), 0);
    set({"plot_style/0/screen=50", "plot_style/8/lineweight=10"});
    commit("office");
    ASSERT_EQ(shell("git checkout -q main"), 0);
    set({"plot_style/0/lineweight=5", "description=Ours"});
    commit("ours");
    ASSERT_EQ(shell("git merge -q -m merged office"), 0) << output();
    EXPECT_THAT(output(), HasSubstr("pens.ctb: 2 changes taken, 0 conflicts"));
    ASSERT_EQ(shell(externalDiff() + "git diff main~1 main"), 0);
    ASSERT_EQ(shell("git diff HEAD~2 HEAD"), 0);
    EXPECT_THAT(output(), HasSubstr("description: \"\" -> \"Ours\"\n"
                                    "Color 1: screening 100 % -> 50 %, lineweight 0 mm -> 0.15 mm\n"
                                    "Color 9: lineweight 0 mm -> 0.35 mm\n"));
    EXPECT_EQ(run({"check", "@repository/pens.ctb"}).code, 0);

    ASSERT_EQ(shell("git checkout -q office"), 0);
    set({"plot_style/0/lineweight=7", "plot_style/2/screen=10"});
    commit("again");
    ASSERT_NE(shell("git merge -m conflict main"), 0);
    EXPECT_THAT(output(), AllOf(HasSubstr("conflict: Color 1: lineweight 0 mm -> 0.15 mm: it is"),
                                HasSubstr("CONFLICT (content)")));
    EXPECT_EQ(run({"get", "@repository/pens.ctb", "plot_style/0/lineweight"}).out, "7\n");
    EXPECT_EQ(run({"get", "@repository/pens.ctb", "description"}).out, "Ours\n");
}

}  // namespace
