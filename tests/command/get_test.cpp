#include "tests/command/support.h"

using testing::HasSubstr;

namespace {

using CommandGetTest = CommandTest;

/// Names that look like paths and types, and one name with every type.
constexpr std::string_view body =
    "plain=\"text\nsame=\"word\nsame=7\nsame=TRUE\nsame=\\DATA\\\nsame{\n inner=0.500000\n}\n"
    "a{\n b{\n  c=1\n  d=\"deep\n }\n b/c=2\n}\na/b{\n c=3\n}\nx:num=\"not a number\nx=5\n";

TEST_F(CommandGetTest, PathsLeadToItems) {
    writeFile("tree", body, PiaKind::Pc3);
    const struct {
        const char* path;
        const char* out;
        int code;
    } cases[] = {
        {"plain", "text\n", 0},
        {"plain:str", "text\n", 0},
        {"plain:num", "", 1},
        {"same", "word\n", 3},
        {"same:num", "7\n", 0},
        {"same:bool", "TRUE\n", 0},
        {"same:bin", "DATA\n", 0},
        {"same:block", "inner=0.500000\n", 0},
        {"same/inner", "0.500000\n", 0},
        // The longest name that leads anywhere wins; the shorter ones are tried when it does not.
        {"a/b/c", "3\n", 0},
        {"a/b/d", "deep\n", 0},
        {"a/b", "c=3\n", 0},
        {"x:num", "not a number\n", 0},
        {"x", "5\n", 0},
        {"", "", 1},
        {"plain/", "", 1},
        {"/plain", "", 1},
        {"Plain", "", 1},
    };
    for (const auto& [path, out, code] : cases) {
        const CommandResult result = run({"get", "@tree", path});
        EXPECT_EQ(result.out, out) << path;
        EXPECT_EQ(result.code, code) << path;
        EXPECT_EQ(result.err.empty(), code == 0) << path << result.err;
    }
}

TEST_F(CommandGetTest, AbsentItemsDoNotHideTheOthers) {
    writeFile("tree", body, PiaKind::Pc3);
    expectRun({"get", "@tree", "x", "y", "a/b/c"}, 1, "5\n3\n", HasSubstr("y"));
}

TEST_F(CommandGetTest, JsonIsABodyThatCanBeReadAgain) {
    prepare({"create", "stb", "-o", "@table"});
    for (const Arguments& item :
         {Arguments{}, {"plot_style/0"}, {"plot_style/0/adaptive_linetype"}}) {
        const CommandResult json = run(joined({"get", "@table", "--json"}, item));
        ASSERT_EQ(json.code, 0) << json.err;
        write("part.json", json.out);
        EXPECT_EQ(run({"get", "@part.json", "--json"}).out, json.out);
    }
    EXPECT_EQ(run({"get", "@part.json"}).out, "adaptive_linetype=TRUE\n");
}

TEST_F(CommandGetTest, ATerminalGetsNoControlCharacters) {
    writeFile("tree", "a=\"\x1B[2J\x7F|\n", PiaKind::Pc3);
    EXPECT_EQ(run({"get", "@tree", "a"}, true).out, "\\x1B[2J\\x7F|\n");
    EXPECT_EQ(run({"get", "@tree", "a"}, false).out, "\x1B[2J\x7F|\n");
}

}  // namespace
