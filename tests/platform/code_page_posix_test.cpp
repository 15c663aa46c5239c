#include <gtest/gtest.h>

#include <platen/utcore.h>

namespace {

class CodePages : public testing::Test {
protected:
    void TearDown() override { ASSERT_TRUE(ut::setAnsiCodePage("WINDOWS-1252")); }
};

TEST_F(CodePages, DecodeAndEncode) {
    const struct {
        const char* page;
        std::string bytes;
        std::wstring text;
        /// What the text encodes to, where that differs from the bytes.
        std::string back;
    } cases[] = {
        {"WINDOWS-1251", "\xC6\x98z", L"\u0416\u0098z", ""},
        // Also a double byte character whose second byte is a backslash, and a lead byte without
        // its second one.
        {"CP932", "a\x83\x5C\\\x93\xFA\xB1", L"a\u30BD\\\u65E5\uFF71", ""},
        {"CP932", "\x93\xFA\x93", L"\u65E5\u0093", "\x93\xFA?"},
        {"CP932",
         "\xFF"
         "A",
         L"\u00FF"
         L"A",
         "?A"},
        {"GB18030", "\x94\x39\xFC\x36", L"\U0001F600", ""},
        // The page joins a letter and the mark after it; none may be lost at the end.
        {"BIG5-HKSCS", "\x88\x66", L"\u00CA", ""},
        // Byte D5 is undefined, and claims no other byte's character.
        {"CP857", "\xE5", L"\u00D5", ""},
        {"UTF-8", "\xC3\xA9\xE9", L"\u00E9\u00E9", "\xC3\xA9\xC3\xA9"},
        {"utf8", "\xF0\x9F\x98\x80", L"\U0001F600", ""},
    };
    for (const auto& entry : cases) {
        SCOPED_TRACE(entry.page + testing::PrintToString(entry.bytes));
        ASSERT_TRUE(ut::setAnsiCodePage(entry.page));
        EXPECT_EQ(ut::ansiCodePage(), entry.page);
        EXPECT_EQ(ut::decodeAnsi(entry.bytes), entry.text);
        std::string back;
        ut::convertToAnsi(entry.text, back);
        EXPECT_EQ(back, entry.back.empty() ? entry.bytes : entry.back);
    }
}

TEST_F(CodePages, WithoutPlainAsciiAreRefused) {
    for (const char* page :
         {"UTF-16", "UTF-7", "EBCDIC-US", "ISO-2022-JP", "SHIFT_JIS", "WINDOWS-1252//TRANSLIT"}) {
        EXPECT_FALSE(ut::setAnsiCodePage(page)) << page;
    }
}

}  // namespace
