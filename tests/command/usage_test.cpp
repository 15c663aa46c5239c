#include "tests/command/support.h"

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

using CommandUsageTest = CommandTest;

TEST_F(CommandUsageTest, AMistakeIsNamedWithWhatWasProbablyMeant) {
    const std::pair<Arguments, const char*> mistakes[] = {
        {{}, "a command is missing; there are \"info\", \"get\", "},
        {{"explain"}, "there is no command \"explain\"; there are \"info\", \"get\", "},
        {{"Chekc", "@a.ctb"},
         "there is no command \"Chekc\"; did you mean \"check\"? See platen -"},
        {{"[x]"}, "there is no command \"[x]\"; there are "},
        {{"explain", "check", "x"}, "there is no command \"explain\"; there are "},
        {{"--jsn", "check", "x"}, "platen has no option \"--jsn\"; there are \"--help\", \"--v"},
        {{"check", "--jsn", "x"},
         "check has no option \"--jsn\"; did you mean \"--json\"? See platen check --help\n"},
        {{"check", "--jsn=yes"}, "check has no option \"--jsn\"; did you mean \"--json\"? See"},
        {{"papers", "-j", "x"}, "papers has no option \"-j\"; did you mean \"--json\"? See"},
        {{"info"}, "info needs FILE; see platen info --help\n"},
        {{"convert", "@a.ctb"}, "convert needs --output OUT; see"},
        {{"papers", "--device"}, "--device needs a value: {pdf,image,none}; see"},
        {{"convert", "@a.ctb", "-o"}, "--output needs a value: OUT; see"},
        {{"create", "ctb", "-o", "@b", "-o", "@c"}, "--output can be given once only; see"},
        {{"devmode", "a", "[b]"}, "\"[b]\" is one operand too many: devmode takes SOURCE; see"},
        {{"printers", "b"}, "\"b\" is one operand too many: printers takes none; see"},
        {{"paper"}, "an action is missing behind paper; there are \"add\", \"remove\", "},
        {{"paper", "resise", "@a.ctb"},
         "paper has no action \"resise\"; did you mean \"resize\"? See platen paper --help\n"},
        {{"paper", "add", "@a.ctb"},
         "paper add needs --name NAME and --size WxH; see platen paper add --help\n"},
        {{"convert", "@a.ctb", "-o", "@b", "--to", "svg"},
         "--to: there is no \"svg\"; there are \"ctb\", \"stb\", \"pc3\", \"pmp\", \"json\", "
         "\"text\", \"csv\"; see"},
        {{"create", "[cbt]", "-o", "@b"}, "KIND: there is no \"[cbt]\"; there are"},
        {{"create", "cbt", "-o", "@b"}, "KIND: there is no \"cbt\"; did you mean \"ctb\"? See"},
        {{"check", "@a.ctb", "--json=perhaps"}, "Could not convert: --json = perhaps; see"},
        {{"info", "@a.ctb", "--max-body", "12 lots"}, "--max-body: \"12 lots\" is no size; write"},
        {{"info", "@a.ctb", "--max-body=-1"}, "--max-body: \"-1\" is no size; write"},
        // Not the parser's.
        {{"convert", "@a.ctb", "-o", "@a.unknown"}, "the name does not say what to convert to"},
        {{"convert", "@a.ctb", "-o", "@b.json", "--prefix", "Pen"}, "no such conversion"},
        {{"create", "pc3", "-o", "@a.pc3"}, "a configuration needs either --device"},
        {{"set", "@a.ctb", "description=x"}, "say where the result goes"},
        {{"set", "@a.ctb", "description=x", "-o", "@b", "--in-place"}, "say where the result goes"},
        {{"set", "@a.ctb", "description=x", "--in-place=/x"}, "leave slashes out"},
        {{"set", "@a.ctb", "description=x", "-o", "@nowhere/b"}, "b: the file cannot be written"},
        {{"set", "@missing", "description=x", "-o", "@b"}, "missing: the file cannot be read"},
        {{"papers"}, "say whose papers"},
        {{"papers", "--device", "pdf", "--catalogue"}, "say whose papers"},
        {{"papers", "@a.ctb", "--catalogue"}, "say whose papers"},
        {{"papers", "--printer", "Plotter", "--catalogue"}, "say whose papers"},
        {{"papers", "@a.ctb"}, "a.ctb: "},
    };
    prepare({"create", "ctb", "-o", "@a.ctb"});
    const std::string before = read("a.ctb");
    for (const auto& [arguments, message] : mistakes) {
        expectRefused(arguments, message);
        EXPECT_THAT(run(arguments).err, testing::StartsWith("platen: "));
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
    const std::pair<std::vector<std::string>, int> cases[] = {
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
    std::istringstream in;
    EXPECT_EQ(cli::run({"info", path("sound")}, {out, err, in}), 2);
    EXPECT_THAT(err.str(), HasSubstr("standard output"));
}

}  // namespace
