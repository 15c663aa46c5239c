#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <utility>

#include <platen/utcore.h>

using namespace std::string_literals;

namespace {

/// `character` as one wide text, a pair where the system needs one.
std::wstring wide(char32_t character) {
    if (sizeof(wchar_t) == 2 && character > 0xFFFF) {
        return {static_cast<wchar_t>(0xD800 + ((character - 0x10000) >> 10)),
                static_cast<wchar_t>(0xDC00 + (character & 0x3FF))};
    }
    return {static_cast<wchar_t>(character)};
}

TEST(Utf8, AcceptsTheEdgesOfEveryLength) {
    const std::pair<const char*, char32_t> accepted[] = {
        {"\x7F", 0x7F},
        {"\xC2\x80", 0x80},
        {"\xDF\xBF", 0x7FF},
        {"\xE0\xA0\x80", 0x800},
        {"\xED\x9F\xBF", 0xD7FF},
        {"\xEE\x80\x80", 0xE000},
        {"\xEF\xBF\xBF", 0xFFFF},
        {"\xF0\x90\x80\x80", 0x10000},
        {"\xF4\x8F\xBF\xBF", 0x10FFFF},
    };
    for (const auto& [bytes, character] : accepted) {
        SCOPED_TRACE(testing::PrintToString(bytes));
        std::wstring text;
        EXPECT_TRUE(ut::isUtf8(bytes));
        ASSERT_TRUE(ut::decodeUtf8(bytes, text));
        EXPECT_EQ(text, wide(character));
        EXPECT_EQ(ut::encodeUtf8(text), bytes);
    }
}

TEST(Utf8, RefusesMalformedBytesWhereverTheyStand) {
    for (const std::string& bytes :
         {"\x80"s, "\xBF"s, "\xC0\x80"s, "\xC1\xBF"s, "\xC2"s, "\xC2\x41"s, "\xE0\x9F\xBF"s,
          "\xE2\x82"s, "\xED\xA0\x80"s, "\xED\xBF\xBF"s, "\xEF\xBF\x41"s, "\xF0\x9F\x98"s,
          "\xF0\x8F\xBF\xBF"s, "\xF4\x90\x80\x80"s, "\xF5\x80\x80\x80"s, "\xFF"s}) {
        // All places within and around the blocks that ASCII is taken in.
        for (std::size_t before = 0; before <= 33; ++before) {
            for (const std::size_t after : {0u, 1u, 40u}) {
                const std::string body = std::string(before, 'a') + bytes + std::string(after, 'b');
                std::wstring text = L"kept";
                ASSERT_FALSE(ut::isUtf8(body)) << testing::PrintToString(body);
                ASSERT_FALSE(ut::decodeUtf8(body, text)) << testing::PrintToString(body);
                ASSERT_EQ(text, L"kept");
                ASSERT_FALSE(ut::isAscii(body));
                ASSERT_EQ(ut::encodePath(ut::decodePath(body)), body);
            }
        }
    }
}

TEST(Utf8, ConvertsRunsOfEveryLength) {
    for (std::size_t before = 0; before <= 33; ++before) {
        for (std::size_t after = 0; after <= 33; ++after) {
            const std::string head(before, 'x');
            const std::string tail(after, 'y');
            std::string bytes = head;
            bytes.append("\xC3\xA9\xF0\x9F\x98\x80").append(tail);
            std::wstring text(before, L'x');
            text.append(L"\u00E9").append(wide(0x1F600)).append(after, L'y');
            std::wstring decoded(100, L'z');
            ASSERT_TRUE(ut::decodeUtf8(bytes, decoded));
            ASSERT_EQ(decoded, text);
            ASSERT_EQ(ut::encodeUtf8(text), bytes);
            ASSERT_TRUE(ut::isAscii(std::string(before + after, 'x')));
        }
    }
}

TEST(Utf8, LoneSurrogateBecomesTheReplacementCharacter) {
    EXPECT_EQ(ut::encodeUtf8(L"a\xD83D"s), "a\xEF\xBF\xBD");
    EXPECT_EQ(ut::encodeUtf8(L"\xDE00-"s), "\xEF\xBF\xBD-");
    EXPECT_EQ(ut::encodeUtf8(std::wstring{0xDE00, 0xD83D}), "\xEF\xBF\xBD\xEF\xBF\xBD");
    EXPECT_EQ(ut::encodeUtf8(std::wstring{0xD83D, 0xDE00}), "\xF0\x9F\x98\x80");
}

TEST(Path, OtherBytesBecomeLoneSurrogates) {
    EXPECT_EQ(ut::decodePath("a\xE4z"), (std::wstring{L'a', 0xDCE4, L'z'}));
}

TEST(Path, ExtensionIsOfTheLastComponent) {
    const std::tuple<const wchar_t*, const wchar_t*, bool> cases[] = {
        {L"pens.ctb", L"ctb", true},         {L"/plots/PENS.CtB", L"ctb", true},
        {L"a.b/pens", L"b/pens", false},     {L"a.ctb/pens", L"ctb", false},
        {L"dir/.ctb", L"ctb", false},        {L".ctb", L"ctb", false},
        {L"pens.ctb.bak", L"ctb", false},    {L"pens.", L"ctb", false},
        {L"pens.ctbx", L"ctb", false},       {L"a..pc3", L"pc3", true},
        {L"\u0416.\u0416", L"\u0436", true}, {L"", L"ctb", false},
    };
    for (const auto& [path, extension, has] : cases) {
        EXPECT_EQ(ut::hasExtension(path, extension), has) << ut::encodeUtf8(path);
    }
}

TEST(Utf16, CountsAndCutsInUnits) {
    const std::wstring text = L"a" + wide(0x1F600) + L"\uFFFD" + wide(0x10FFFF);
    EXPECT_EQ(ut::utf16Length(text), 6u);
    const std::size_t expected[] = {0, 1, 1, 3, 4, 4, 6, 6};
    for (std::size_t units = 0; units < std::size(expected); ++units) {
        const std::wstring_view prefix = ut::utf16Prefix(text, units);
        EXPECT_EQ(ut::utf16Length(prefix), expected[units]) << units;
        EXPECT_EQ(prefix.data(), text.data());
    }
}

TEST(Utf16, OrdersByUnits) {
    // Ascending: a pair begins with D800 to DBFF, so it stands before E000.
    constexpr char32_t ascending[] = {'A',     'a',      0xE9,   0xD7FF, 0x10000,
                                      0x10001, 0x10FFFF, 0xE000, 0xFFFF};
    for (std::size_t i = 0; i < std::size(ascending); ++i) {
        for (std::size_t k = 0; k < std::size(ascending); ++k) {
            const int result = ut::compareOrdinal(wide(ascending[i]), wide(ascending[k]));
            EXPECT_EQ(result < 0, i < k) << i << ' ' << k;
            EXPECT_EQ(result > 0, i > k) << i << ' ' << k;
        }
    }
    EXPECT_LT(ut::compareOrdinal(L"", L"A"), 0);
    EXPECT_LT(ut::compareOrdinal(L"A", L"AB"), 0);
    EXPECT_LT(ut::compareOrdinal(wide(0x10000) + L"x", wide(0x10001)), 0);
    EXPECT_EQ(ut::compareOrdinal(wide(0x1F600), std::wstring{0xD83D, 0xDE00}), 0);
    EXPECT_LT(ut::compareOrdinal(std::wstring{0xD83D}, wide(0x1F600)), 0);
}

TEST(Characters, LowerCase) {
    const std::pair<char32_t, char32_t> cases[] = {
        {'A', 'a'},       {'Z', 'z'},       {'@', '@'},      {'[', '['},       {0xC0, 0xE0},
        {0xD6, 0xF6},     {0xD7, 0xD7},     {0xDE, 0xFE},    {0xDF, 0xDF},     {0x100, 0x101},
        {0x101, 0x101},   {0x130, 'i'},     {0x131, 0x131},  {0x178, 0xFF},    {0x1C5, 0x1C6},
        {0x391, 0x3B1},   {0x3A2, 0x3A2},   {0x3A3, 0x3C3},  {0x3C2, 0x3C2},   {0x401, 0x451},
        {0x42F, 0x44F},   {0x531, 0x561},   {0x1E9E, 0xDF},  {0x1F59, 0x1F51}, {0x1F5A, 0x1F5A},
        {0x2126, 0x3C9},  {0x212A, 'k'},    {0x2C6F, 0x250}, {0xFF3A, 0xFF5A}, {0xFF5B, 0xFF5B},
        {0xFFFF, 0xFFFF}, {0xD800, 0xD800},
    };
    for (const auto& [upper, lower] : cases) {
        EXPECT_EQ(static_cast<char32_t>(ut::toLower(static_cast<wchar_t>(upper))), lower)
            << std::hex << static_cast<std::uint32_t>(upper);
    }
    EXPECT_TRUE(ut::equalNoCase(L"\u041F\u0435\u0440\u043E 1", L"\u043F\u0415\u0420\u041E 1"));
    EXPECT_FALSE(ut::equalNoCase(L"ab", L"abc"));
    EXPECT_FALSE(ut::equalNoCase(L"ab", L"a\u0432"));
}

TEST(Characters, LoweringTwiceChangesNothing) {
    for (std::uint32_t code = 0; code <= 0xFFFF; ++code) {
        const wchar_t lower = ut::toLower(static_cast<wchar_t>(code));
        ASSERT_EQ(ut::toLower(lower), lower) << std::hex << code;
    }
}

TEST(Characters, WhiteSpaceIsTheSameEverywhere) {
    std::wstring spaces;
    for (std::uint32_t code = 0; code <= 0xFFFF; ++code) {
        if (ut::isSpace(static_cast<wchar_t>(code))) {
            spaces += static_cast<wchar_t>(code);
        }
    }
    EXPECT_EQ(spaces,
              (std::wstring{0x09,   0x0A,   0x0B,   0x0C,   0x0D,   0x20,   0x85,   0xA0,   0x1680,
                            0x2000, 0x2001, 0x2002, 0x2003, 0x2004, 0x2005, 0x2006, 0x2007, 0x2008,
                            0x2009, 0x200A, 0x2028, 0x2029, 0x202F, 0x205F, 0x3000}));
}

}  // namespace
