#include <gmock/gmock.h>

#include "tests/command/support.h"

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

using CommandUsageTest = CommandTest;

TEST_F(CommandUsageTest, WrongUsageIsAnErrorInWords) {
    const std::vector<std::vector<std::string>> wrong{
        {},
        {"explain"},
        {"info"},
        {"info", "--frobnicate", "@a.ctb"},
        {"get"},
        {"check"},
        {"convert", "@a.ctb"},
        {"convert", "@a.ctb", "-o", "@a.ctb", "--to", "svg"},
        {"convert", "@a.ctb", "-o", "@a.unknown"},
        {"convert", "@a.ctb", "-o", "@b.json", "--prefix", "Pen"},
        {"create", "pc3", "-o", "@a.pc3"},
        {"set"},
        {"set", "@a.ctb", "description=x"},
        {"set", "@a.ctb", "description=x", "-o", "@b", "--in-place"},
        {"set", "@a.ctb", "description=x", "--in-place=/x"},
        {"set", "@a.ctb", "description=x", "-o", "@nowhere/b"},
        {"set", "@missing", "description=x", "-o", "@b"},
        {"migrate", "@"},
        {"papers"},
        {"papers", "--device", "plotter"},
        {"papers", "--device", "pdf", "--catalogue"},
        {"papers", "@a.ctb", "--catalogue"},
        {"papers", "@a.ctb"},
        {"papers", "@missing"},
        {"paper", "add", "@a.ctb"},
        {"devmode"},
        {"papers", "--printer", "Plotter", "--catalogue"},
        {"create", "ctb"},
    };
    prepare({"create", "ctb", "-o", "@a.ctb"});
    const std::string before = read("a.ctb");
    for (const std::vector<std::string>& arguments : wrong) {
        expectRefused(arguments, "platen: ");
    }
    EXPECT_EQ(read("a.ctb"), before);
    EXPECT_THAT(names(), testing::ElementsAre("a.ctb"));
}

TEST_F(CommandUsageTest, HelpShowsExamplesAndVersionShowsItself) {
    EXPECT_THAT(run({"--version"}).out, testing::MatchesRegex("platen .*\\..*\\..*\n"));
    const std::vector<std::vector<std::string>> commands{
        {},      {"migrate"}, {"info"},  {"get"},          {"check"},    {"convert"}, {"create"},
        {"set"}, {"papers"},  {"paper"}, {"paper", "add"}, {"printers"}, {"devmode"}};
    for (std::vector<std::string> arguments : commands) {
        std::string name;
        for (const std::string& word : arguments) {
            name += (name.empty() ? "" : " ") + word;
        }
        arguments.emplace_back("--help");
        const CommandResult result = run(arguments);
        EXPECT_EQ(result.code, 0) << name;
        EXPECT_THAT(result.out, AllOf(HasSubstr("Usage: platen"), HasSubstr("Examples:"),
                                      HasSubstr("  platen " + name)));
        EXPECT_THAT(result.err, IsEmpty());
    }
    EXPECT_THAT(run({"--help"}).out, HasSubstr("Usage: platen [OPTIONS] COMMAND\n"));
    EXPECT_THAT(run({"create", "--help"}).out, HasSubstr("\n  platen create pmp --from "));
}

TEST_F(CommandUsageTest, TheWorstOfABatchWins) {
    prepare({"create", "stb", "-o", "@sound"});
    std::string bytes = read("sound");
    bytes[48] = static_cast<char>(bytes[48] ^ 1);
    write("warned", bytes);
    const struct {
        std::vector<std::string> files;
        int code;
    } cases[] = {
        {{"@sound"}, 0},
        {{"@warned", "@sound"}, 3},
        {{"@sound", "@missing", "@warned"}, 2},
        {{"@warned", "@missing"}, 2},
    };
    for (const char* command : {"info", "check"}) {
        for (const auto& [files, code] : cases) {
            EXPECT_EQ(run(joined({command}, files)).code, code) << testing::PrintToString(files);
        }
    }
    EXPECT_EQ(run({"get", "@sound", "description", "nowhere"}).code, 1);
    EXPECT_EQ(run({"get", "@warned", "description", "nowhere"}).code, 3);
}

TEST_F(CommandUsageTest, NamesAreTakenAsTheyStand) {
    // Brackets, commas, commands' names, slashes and letters beyond ASCII mean nothing special.
    const std::vector<std::string> odd{"info", "[a,b]", "a=b", "Plot\xC3\xB6r \xE2\x82\xAC.ctb"};
    for (const std::string& name : odd) {
        const std::string file = path("x") + name;
        ASSERT_EQ(run({"create", "stb", "-o", file}).code, 0) << name;
        const CommandResult result = run({"info", "--json", file});
        EXPECT_EQ(result.code, 0) << name << result.err;
        EXPECT_THAT(result.out, HasSubstr(name)) << name;
    }
    EXPECT_EQ(run({"get", path("x") + odd[0], "[plot_style]", "/plot_style"}).code, 1);
    EXPECT_THAT(run({"get", path("x") + odd[0], "[plot_style]", "/plot_style"}).err,
                AllOf(HasSubstr("[plot_style]"), HasSubstr("/plot_style")));
}

TEST_F(CommandUsageTest, AFullOutputIsAnError) {
    prepare({"create", "stb", "-o", "@sound"});
    std::ostringstream out;
    std::ostringstream err;
    out.setstate(std::ios::badbit);
    EXPECT_EQ(cli::run({"info", path("sound")}, out, err, false), 2);
    EXPECT_THAT(err.str(), HasSubstr("standard output"));
}

}  // namespace
