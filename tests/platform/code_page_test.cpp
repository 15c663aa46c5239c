#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include <platen/oda.h>
#include <platen/utcore.h>

namespace {

/// Bytes written in code page 1252 must be the same on every system.
class Windows1252 : public testing::Test {
protected:
    void SetUp() override {
        if (ut::ansiCodePage() != "WINDOWS-1252") {
            GTEST_SKIP() << "this system's code page is " << ut::ansiCodePage();
        }
    }
};

TEST_F(Windows1252, EveryByteSurvives) {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) {
        bytes += static_cast<char>(byte);
    }
    const std::wstring text = ut::decodeAnsi(bytes);
    ASSERT_EQ(text.size(), 256u);
    EXPECT_EQ(text.substr(0x80, 6), L"\u20AC\x81\u201A\u0192\u201E\u2026");
    EXPECT_EQ(text.substr(0x8D, 5), L"\x8D\u017D\x8F\x90\u2018");
    EXPECT_EQ(text.substr(0x9C, 5), L"\u0153\x9D\u017E\u0178\u00A0");
    EXPECT_EQ(text[0xFF], L'\u00FF');
    std::string back = "before";
    EXPECT_EQ(ut::convertToAnsi(text, back), 0u);
    EXPECT_EQ(back, "before" + bytes);
    EXPECT_EQ(OdString(bytes, OdCodePageId::CP_ANSI).text(), text);
}

TEST_F(Windows1252, WhatItDoesNotHoldBecomesQuestionMarks) {
    const std::tuple<std::wstring, const char*, std::size_t> cases[] = {
        {L"", "", 0},
        {L"plain", "plain", 0},
        {L"\u00E9\u20AC", "\xE9\x80", 0},
        // Neither look-alikes nor combining forms.
        {L"\u0100\u2212\uFF21", "???", 3},
        {L"e\u0301", "e?", 1},
        {L"a\u0416b\u00FCc",
         "a?b\xFC"
         "c",
         1},
        {L"\U0001F600", "??", 2},
        {std::wstring{0xD83D}, "?", 1},
        {std::wstring{L'a', 0xDE00, 0xD83D}, "a??", 2},
        {L"0123456789abcdef0123456789abcdef\u0416", "0123456789abcdef0123456789abcdef?", 1},
    };
    for (const auto& [text, expected, lost] : cases) {
        std::string bytes;
        EXPECT_EQ(ut::convertToAnsi(text, bytes), lost) << expected;
        EXPECT_EQ(bytes, expected);
    }
}

TEST_F(Windows1252, IsAcceptedByItsName) {
    EXPECT_TRUE(ut::setAnsiCodePage("windows-1252"));
    EXPECT_TRUE(ut::setAnsiCodePage("WINDOWS-1252"));
    for (const char* name : {"", "no such page", "UTF-16", static_cast<const char*>(nullptr)}) {
        EXPECT_FALSE(ut::setAnsiCodePage(name));
        EXPECT_EQ(ut::ansiCodePage(), "WINDOWS-1252");
    }
}

}  // namespace
