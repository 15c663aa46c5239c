#include <gmock/gmock.h>

#include "tests/command/support.h"

using testing::HasSubstr;
using testing::IsEmpty;

namespace {

using CommandCheckTest = CommandTest;

TEST_F(CommandCheckTest, DamagedContainersAreNamed) {
    prepare({"create", "stb", "-o", "@sound"});
    const std::string sound = read("sound");
    const auto flipped = [&](std::size_t at) {
        std::string bytes = sound;
        bytes[at] = static_cast<char>(bytes[at] ^ 0x55);
        return bytes;
    };
    const struct {
        std::string bytes;
        const char* word;
        int code;
    } cases[] = {
        {sound, "ok", 0},
        {flipped(20), "[header-text]", 3},
        {flipped(48), "[checksum-mismatch]", 3},
        {flipped(52), "[body-length]", 3},
        {flipped(56), "[compressed-length]", 3},
        {sound + "tail", "[bytes-after-stream]", 3},
        {sound.substr(0, 40), "[file-too-short]", 2},
        {sound.substr(0, sound.size() / 2), "[stream-truncated]", 2},
        {flipped(70), "[stream-", 2},
        {"", "[json-missing]", 2},
        {"{\"data\":3}", "[json-no-data]", 2},
    };
    for (const auto& [bytes, word, code] : cases) {
        write("file", bytes);
        const CommandResult result = run({"check", "@file"});
        EXPECT_EQ(result.code, code) << word << result.out;
        EXPECT_THAT(result.out, HasSubstr(word));
        EXPECT_THAT(result.err, IsEmpty());
    }
}

TEST_F(CommandCheckTest, SenselessTablesAreNamed) {
    const std::string body = createdBody("ctb");
    const struct {
        const char* from;
        const char* to;
        PiaKind kind;
        int code;
        const char* expected;
    } cases[] = {
        {"lineweight=0", "lineweight=27", PiaKind::Ctb, 3, "[style-lineweight-range]"},
        {"lineweight=0", "lineweight=-1", PiaKind::Ctb, 3, "at plot_style/0/lineweight"},
        {"screen=100", "screen=101", PiaKind::Ctb, 3, "[style-screen-range]"},
        {"  name=\"Color_2\n", "  name=\"COLOR_1\n", PiaKind::Ctb, 2, "[style-unknown]"},
        {"Color_7\n", "Color_8\n", PiaKind::Ctb, 3, "[colour-order]"},
        {"aci_table_available=TRUE", "aci_table_available=FALSE", PiaKind::Ctb, 3, "[header-kind]"},
        {"aci_table_available=TRUE", "aci_table_available=FALSE", PiaKind::Stb, 0, "ok"},
        {"scale_factor=", "scale_tractor=", PiaKind::Ctb, 2, "[key-missing]"},
        {"  screen=100", "  screen=most", PiaKind::Ctb, 2, "[value-invalid]"},
        {" 254=\"Color_255", " 255=\"Color_255", PiaKind::Ctb, 2, "[index-invalid]"},
    };
    for (const auto& [from, to, kind, code, expected] : cases) {
        writeFile("file", replaced(body, from, to), kind);
        const CommandResult result = run({"check", "@file"});
        EXPECT_EQ(result.code, code) << to << result.out;
        EXPECT_THAT(result.out, HasSubstr(expected)) << to;
    }
}

TEST_F(CommandCheckTest, TwoStylesOfOneNameAreNamed) {
    const std::string body = createdBody("stb");
    const std::size_t first = body.find(" 0{");
    const std::size_t end = body.find(" }\n", first) + 3;
    const std::string style =
        replaced(replaced(body.substr(first, end - first), " 0{", " 1{"), "\"Normal", "\"NORMAL");
    writeFile("file", std::string(body).insert(end, style), PiaKind::Stb);
    const CommandResult result = run({"check", "@file"});
    EXPECT_EQ(result.code, 3);
    EXPECT_THAT(result.out, HasSubstr("[style-name-duplicate]"));
    EXPECT_THAT(result.out, HasSubstr("plot_style/1/name"));
}

TEST_F(CommandCheckTest, WhatWritingWouldLoseIsNamed) {
    prepare({"create", "stb", "-o", "@sound"});
    prepare({"convert", "@sound", "-o", "@sound.json"});
    const std::string json = read("sound.json");
    const struct {
        std::string description;
        const char* expected;
    } cases[] = {
        {std::string(600, 'x'), "[line-cut]"},
        {"\xE7\xBB\x98\xE5\x9B\xBE", "[character-lost]"},
        {"two\\nlines", "[line-break-in-value]"},
    };
    for (const auto& [description, expected] : cases) {
        write("file",
              replaced(json, "\"description\": \"\"", "\"description\": \"" + description + "\""));
        const CommandResult result = run({"check", "@file"});
        EXPECT_EQ(result.code, 3) << expected << result.out;
        EXPECT_THAT(result.out, HasSubstr(expected));
    }
}

TEST_F(CommandCheckTest, AFileThatCannotBeReadIsAMessage) {
    expectRefused({"check", "@missing"}, "missing");
}

}  // namespace
