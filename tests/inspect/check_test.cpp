#include <gmock/gmock.h>

#include <memory>
#include <utility>

#include "inspect/rewriting.h"
#include "tests/inspect/found.h"
#include "tests/support/configurations.h"
#include "tests/support/files.h"

using platen::Verdict;

namespace {

std::string tableBody(bool colours) {
    const std::unique_ptr<CPlotStyleTable> table(CPlotStyleTable::create(colours, L""));
    return bodyOfDocument(*table);
}

/// `text` with its first `from` replaced.
std::string withFirst(std::string text, const std::string& from, const std::string& to) {
    return text.replace(text.find(from), from.size(), to);
}

TEST(Check, DamagedContainersAreNamed) {
    const std::string sound = fileAround(tableBody(false), PiaKind::Stb);
    const auto flipped = [&](std::size_t at) {
        std::string bytes = sound;
        bytes[at] = static_cast<char>(bytes[at] ^ 0x55);
        return bytes;
    };
    const std::pair<std::string, const char*> cases[] = {
        {sound, ""},
        {flipped(20), "warning header-text "},
        {flipped(48), "warning checksum-mismatch "},
        {flipped(52), "warning body-length \nwarning checksum-mismatch "},
        {flipped(56), "warning compressed-length \nwarning checksum-mismatch "},
        {sound + "tail", "warning bytes-after-stream "},
        {sound.substr(0, 40), "error file-too-short "},
        {sound.substr(0, sound.size() / 2), "error stream-truncated "},
        {"", "error json-missing "},
        {"{\"data\":3}", "error json-no-data "},
    };
    for (const auto& [bytes, found] : cases) {
        const platen::CheckResult result = platen::checkBytes(bytes);
        EXPECT_EQ(foundIn(result), found);
        const std::string_view severity = std::string_view(found).substr(0, 5);
        EXPECT_EQ(result.verdict, severity.empty()      ? Verdict::Sound
                                  : severity == "error" ? Verdict::Errors
                                                        : Verdict::Warnings);
        EXPECT_EQ(result.kind.has_value(), result.verdict != Verdict::Errors);
    }
    EXPECT_THAT(foundIn(platen::checkBytes(flipped(70))), testing::StartsWith("error stream-"));
    EXPECT_EQ(foundIn(platen::check(L"/no/such/file")), "error file-unreadable ");
    PiaInput never;
    EXPECT_EQ(platen::checkInput(never).kind, std::nullopt);
}

TEST(Check, SenselessTablesAreNamed) {
    const std::string body = tableBody(true);
    const std::string named = tableBody(false);
    const std::size_t end = named.find(" }\n") + 3;
    const std::string normal = named.substr(named.find(" 0{"), end - named.find(" 0{"));
    const std::string twice = std::string(named).insert(
        end, withFirst(withFirst(normal, " 0{", " 1{"), "\"Normal", "\"NORMAL"));
    EXPECT_EQ(foundIn(named, PiaKind::Stb), "");
    EXPECT_EQ(foundIn(twice, PiaKind::Stb),
              "warning style-name-duplicate plot_style/1/name|  name=\"NORMAL");
    const char* const range =
        "warning style-lineweight-range plot_style/0/lineweight|  lineweight=";
    const char* const screen = "warning style-screen-range plot_style/0/screen|  screen=";
    const struct {
        const char* from;
        std::string to;
        PiaKind kind;
        std::string found;
    } cases[] = {
        {"lineweight=0", "lineweight=26", PiaKind::Ctb, ""},
        {"lineweight=0", "lineweight=27", PiaKind::Ctb, range + std::string("27")},
        {"lineweight=0", "lineweight=-1", PiaKind::Ctb, range + std::string("-1")},
        {"screen=100", "screen=0", PiaKind::Ctb, ""},
        {"screen=100", "screen=101", PiaKind::Ctb, screen + std::string("101")},
        {"screen=100", "screen=-1", PiaKind::Ctb, screen + std::string("-1")},
        {"  name=\"Color_2\n", "  name=\"COLOR_1\n", PiaKind::Ctb,
         "error style-unknown aci_table/1| 1=\"Color_2"},
        {"Color_7\n", "Color_8\n", PiaKind::Ctb, "warning colour-order aci_table|aci_table{"},
        {"aci_table_available=TRUE", "aci_table_available=FALSE", PiaKind::Ctb,
         "warning header-kind aci_table_available|aci_table_available=FALSE"},
        {"aci_table_available=TRUE", "aci_table_available=FALSE", PiaKind::Stb, ""},
        {"  screen=100", "  screen=most", PiaKind::Ctb,
         "error value-invalid plot_style/0/screen|  screen=most"},
        {"  screen=100\n", "", PiaKind::Ctb, "error key-missing plot_style/0/screen| 0{"},
        {" 254=\"Color_255", " 255=\"Color_255", PiaKind::Ctb,
         "error index-invalid aci_table/255| 255=\"Color_255"},
    };
    for (const auto& [from, to, kind, found] : cases) {
        EXPECT_EQ(foundIn(withFirst(body, from, to), kind), found) << to;
    }
}

TEST(Check, WhatWritingWouldLoseIsNamed) {
    const auto json = [](const std::string& members) {
        return foundIn(platen::checkBytes("{\"data\":{" + members + "}}"));
    };
    EXPECT_EQ(json(R"("a":1)"), "");
    EXPECT_EQ(json(R"("a":{"b":")" + std::string(600, 'x') + "\"}"), "warning line-cut a/b");
    EXPECT_EQ(json("\"a\":\"\xE7\xBB\x98\xE5\x9B\xBE\""), "warning character-lost a");
    EXPECT_EQ(json(R"("a":"two\nlines")"), "warning line-break-in-value a");
    EXPECT_EQ(json(R"("a name":1)"), "warning not-read-back a name");
    EXPECT_EQ(json(R"("a":null)"), "warning json-member-skipped a");
    // Bodies as other programs write them may have no room for the spaces that go before a name.
    const std::string full = "b{\nx=\"" + std::string(507, 'y');
    EXPECT_EQ(foundIn(full + "\n}\n", PiaKind::Pc3), "");
    EXPECT_EQ(foundIn(full + "y\n}\n", PiaKind::Pc3),
              "warning line-cut b/x|" + full.substr(3) + 'y');
    EXPECT_EQ(foundIn("x=\"a\r\r\ny=1\n", PiaKind::Pc3), "warning not-read-back x|x=\"a\r\r");
}

// That nobody is sure who may not be is for the fuzzer of bodies.
TEST(Check, WhatSurelyReadsBackNeedsNoBody) {
    std::string deep;
    std::string closing;
    for (int depth = 0; depth < 120; ++depth) {
        deep += "b{\n";
        closing += "}\n";
    }
    for (const std::string& body :
         {std::string("a=1\nb{\nc=\"x\nd=\\00\\\n}\n"), fullConfiguration,
          deep + "a=\"" + std::string(511 - 120 - 3, 'x') + '\n' + closing,
          deep + "a=" + std::string(511 - 120 - 2, '9') + '\n' + closing,
          // Only the beginning of a binary value is bound to the length of a line.
          deep + "a=\\" + std::string(1000, '0') + "\\\n" + closing}) {
        PiaInput input;
        ASSERT_TRUE(input.openBytes(fileAround(body)));
        EXPECT_TRUE(platen::surelyReadsBack(input)) << body;
    }
}

TEST(Check, MoreFindingsThanWantedAreCounted) {
    std::string items;
    for (int number = 0; number < 2000; ++number) {
        items += "n" + std::to_string(number) + "=1\n";
    }
    const std::string file = fileAround(items + bareConfiguration, PiaKind::Pc3);
    const platen::CheckResult few = platen::checkBytes(file, {}, {.mostFindings = 3});
    EXPECT_EQ(few.findings.size(), 3U);
    EXPECT_EQ(few.omitted, platen::mostLostItems - 3);
    EXPECT_EQ(platen::checkBytes(file).findings.size(), platen::mostLostItems);
    EXPECT_EQ(foundIn(platen::checkBytes(file, {}, {.reading = {.limits = {.bodyBytes = 100}}})),
              "error body-too-large ");
}

TEST(Check, AFindingIsOneLine) {
    platen::Finding finding{{.code = PiaCode::ValueInvalid,
                             .line = 7,
                             .path = L"a/b",
                             .expected = L"a number",
                             .found = L"\x1B" + std::wstring(58, L'x') + L"\U0001F4D0y"},
                            platen::Severity::Error,
                            "do\nsomething"};
    EXPECT_EQ(platen::describe(finding),
              "error [value-invalid] the value cannot be used, line 7, at a/b, expected a number, "
              "found \"\\x1B" +
                  std::string(58, 'x') + "...\"; do\\x0Asomething");
}

}  // namespace
