#include "tests/command/support.h"
#include "tests/support/configurations.h"

using testing::HasSubstr;

namespace {

using CommandCheckTest = CommandTest;

TEST_F(CommandCheckTest, FindingsAreLines) {
    prepare({"create", "stb", "-o", "@file"});
    const std::string sound = read("file");
    std::string damaged = sound;
    damaged[48] = static_cast<char>(damaged[48] ^ 1);
    std::string many;
    for (int number = 0; number < 1000; ++number) {
        many += "n" + std::to_string(number) + "=1\n";
    }
    const struct {
        std::string bytes;
        int code;
        std::string words;
    } cases[] = {
        {sound, 0, "ok, named plot style table\n"},
        {fileAround(bareConfiguration, PiaKind::Pc3), 0, "ok, plot configuration\n"},
        {fileAround(bareParameters, PiaKind::Pc3), 0, "ok, plot model parameters\n"},
        {damaged, 3,
         "warning [checksum-mismatch] the checksum in the header is not that of the data, byte 48, "
         "expected "},
        {fileAround(edited(bareParameters, "udm{", "udn{"), PiaKind::Pc3), 0,
         "ok, container of an unknown document\n"},
        {fileAround(edited(bareParameters, "  _y=1.000000\n", "  _y=\x1B[2J\n"), PiaKind::Pc3), 2,
         "error [value-invalid] the value cannot be used, line 33, at udm/calibration/_y, expected "
         "a number, found \"\\x1B[2J\"; correct the value\n"},
        {fileAround(many + fullParameters, PiaKind::Pc3), 3, "1 more findings\n"},
    };
    for (const auto& [bytes, code, words] : cases) {
        write("file", bytes);
        expectRun({"check", "@file"}, code, HasSubstr(path("file") + ": " + words));
    }
}

TEST_F(CommandCheckTest, AFileThatCannotBeReadIsAMessage) {
    expectRefused({"check", "@missing"}, "missing");
}

TEST_F(CommandCheckTest, TheSizeLimitCanBeRaised) {
    writeFile("file", bareConfiguration, PiaKind::Pc3);
    for (const char* command : {"info", "check", "get"}) {
        const CommandResult refused = run({command, "--max-body", "1kb", "@file"});
        EXPECT_EQ(refused.code, 2) << command;
        EXPECT_THAT(refused.out + refused.err, HasSubstr("--max-body 1GB")) << command;
        EXPECT_EQ(run({command, "--max-body", "3KB", "@file"}).code, 0) << command;
    }
    EXPECT_EQ(run({"convert", "--max-body", "100", "@file", "-o", "@b.json"}).code, 2);
    EXPECT_EQ(run({"convert", "--max-body", "3000", "@file", "-o", "@b.txt"}).code, 0);
}

}  // namespace
