#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>
#include <limits>
#include <random>
#include <utility>

#include <platen/utcore.h>

namespace {

TEST(ScanInt, Converts) {
    const std::pair<std::wstring, std::int32_t> cases[] = {
        {L"0", 0},
        {L"-7", -7},
        {L" \t\n\u00A0\u3000+12abc", 12},
        {L"12.9", 12},
        {L"2147483647", 2147483647},
        {L"-2147483648", std::numeric_limits<std::int32_t>::min()},
        {L"2147483648", std::numeric_limits<std::int32_t>::min()},
        {L"4294967295", -1},
        {L"3271622143", -1023345153},
        {std::wstring(5000, L'0') + L"5", 5},
    };
    for (const auto& [text, expected] : cases) {
        std::int32_t value = 99;
        EXPECT_TRUE(ut::scanInt(text, value)) << ut::encodeUtf8(text);
        EXPECT_EQ(value, expected) << ut::encodeUtf8(text);
    }
}

TEST(ScanInt, Refuses) {
    for (const std::wstring& text : std::initializer_list<std::wstring>{
             L"", L"  ", L"-", L"+-1", L"- 1", L"abc", L"4294967296", L"-2147483649",
             L"18446744073709551617", L"\u0661", std::wstring(5000, L'9')}) {
        std::int32_t value = 99;
        EXPECT_FALSE(ut::scanInt(text, value)) << ut::encodeUtf8(text);
        EXPECT_EQ(value, 99);
    }
}

TEST(ScanDouble, Converts) {
    const std::wstring zeros(4000, L'0');
    const std::pair<std::wstring, double> cases[] = {
        {L"297.000000", 297},
        {L"  -25.4mm", -25.4},
        {L"+.5", 0.5},
        {L"5.", 5},
        {L"1e", 1},
        {L"1e+", 1},
        {L"1e-x", 1},
        {L"1.5E+3", 1500},
        {L"1-2", 1},
        {L"1.2.3", 1.2},
        {L"1,5", 1},
        {L"0x", 0},
        {L"0x-5", 0},
        {L"0xg", 0},
        {L"0x1p3", 8},
        {L"-0X1.8", -1.5},
        {L"0x1p", 1},
        {L"5e-324", 5e-324},
        {L"1.7976931348623157e308", std::numeric_limits<double>::max()},
        // Too small is 0; only too large has no nearest double.
        {L"1e-400", 0},
        {L"1e-99999999999999999999", 0},
        {L"0." + zeros + L"1", 0},
        {L"0x1p-5000", 0},
        {L"0e99999", 0},
        {L"0x0p99999", 0},
        {L"0." + zeros + L"1e4001", 1},
        {L"1" + zeros + L"e-4000", 1},
        {zeros + L"1." + zeros + L"1", 1},
    };
    for (const auto& [text, expected] : cases) {
        double value = 99;
        EXPECT_TRUE(ut::scanDouble(text, value)) << ut::encodeUtf8(text);
        EXPECT_EQ(value, expected) << ut::encodeUtf8(text);
    }
    double negativeZero = 1;
    EXPECT_TRUE(ut::scanDouble(L"-0", negativeZero));
    EXPECT_TRUE(std::signbit(negativeZero));
}

TEST(ScanDouble, Refuses) {
    for (const std::wstring& text : std::initializer_list<std::wstring>{
             L"", L"-", L".", L".e5", L"e5", L"inf", L"-nan", L"+-5", L"1e309",
             L"-1e99999999999999999999", L"0.001e400", L"0x1p1024", std::wstring(4000, L'9'),
             L"\uFF15"}) {
        double value = 99;
        EXPECT_FALSE(ut::scanDouble(text, value)) << ut::encodeUtf8(text);
        EXPECT_EQ(value, 99);
    }
}

TEST(FormatFixed, Formats) {
    const double infinity = std::numeric_limits<double>::infinity();
    const double nan = std::nan("");
    EXPECT_EQ(ut::formatFixed(297, -1), L"297.000000");
    for (const auto& [value, text] :
         {std::pair(infinity, L"inf"), {-infinity, L"-inf"}, {nan, L"nan"}, {-nan, L"nan"}}) {
        EXPECT_EQ(ut::formatFixed(value, 6), text);
    }
    // Against the C library: edges, numbers with few digits, halves in the last place and others.
    std::mt19937_64 random(20);
    for (int round = 0; round < 200000; ++round) {
        const auto bits = static_cast<double>(random() >> 11U);
        const double edges[] = {0.1, 2.5, -1.005, -0.0, 1e-9, 999999.9999999};
        const double values[] = {edges[random() % std::size(edges)],
                                 static_cast<double>(random() % 200000000) / 1e6 - 100,
                                 (static_cast<double>(random() % 2000001) + 0.5) / 256,
                                 std::ldexp(bits, -static_cast<int>(random() % 100))};
        for (const double value : values) {
            const int precision = static_cast<int>(random() % 8);
            std::array<char, 64> expected{};
            std::snprintf(expected.data(), expected.size(), "%.*f", precision, value);
            ASSERT_EQ(ut::formatFixedAscii(value, precision), expected.data());
            double back = 0;
            ASSERT_TRUE(ut::scanDouble(std::string_view(expected.data()), back));
            ASSERT_EQ(back, std::strtod(expected.data(), nullptr)) << expected.data();
        }
    }
    for (const int precision : {0, 6, 32, 33, 2000}) {
        const std::wstring text = ut::formatFixed(-std::numeric_limits<double>::max(), precision);
        EXPECT_EQ(text.size(), 310u + (precision > 0 ? 1u : 0u) + static_cast<unsigned>(precision));
        double back = 0;
        EXPECT_TRUE(ut::scanDouble(text, back));
        EXPECT_EQ(back, -std::numeric_limits<double>::max());
    }
}

}  // namespace
