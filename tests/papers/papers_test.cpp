#include <platen/papers.h>

#include <gtest/gtest.h>
#include <wx/string.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cwctype>
#include <limits>
#include <random>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include <platen/utcore.h>

namespace {

using wut::PaperSizeInfo;

/// For PDF, for images, for no device.
const std::span<const PaperSizeInfo> builtInTables[] = {{wut::cPdfPapers, wut::cPdfPapersCount},
                                                        {wut::cImagePapers, wut::cImagePapersCount},
                                                        {wut::cNonePapers, wut::cNonePapersCount}};

TEST(PaperCatalogue, NumbersAndNamesAreInverse) {
    for (int id = 0; id <= std::numeric_limits<std::int16_t>::max(); ++id) {
        std::wstring name = wut::getCanonicalPSname(static_cast<std::int16_t>(id)).text();
        EXPECT_EQ(wut::getPSnumber(name.c_str()), id);
        // That each capitalised name leads back also proves that no two are equal ignoring case.
        for (wchar_t& character : name) {
            character = static_cast<wchar_t>(std::towupper(static_cast<std::wint_t>(character)));
        }
        EXPECT_EQ(wut::getPSnumber(name.c_str()), id);
    }
}

TEST(PaperCatalogue, NumberOfName) {
    constexpr int none = 99;
    const std::tuple<const wchar_t*, int, int> cases[] = {
        {nullptr, 0, none},
        {L"", 0, none},
        {L"a4", 9, none},
        {L"A4 ", 0, none},
        {L" A4", 0, none},
        {L"A", 0, none},
        {L"Japanese Envelope Kaku #2", 71, none},
        {L"Japan Envelope Kaku #2", 0, none},
        {L"User", 0, none},
        {L"UserA4", 0, none},
        {L"Uber5", 0, none},
        {L"USER5", 5, 5},
        {L"user300", 300, 300},
        {L"User 12", 12, 12},
        {L"User12abc", 12, 12},
        {L"User-3", -3, -3},
        {L"User32768", -32768, 32768},
        {L"User70000", 4464, 70000},
        {L"User4294967295", -1, -1},
        {L"User4294967296", 0, none},
        {L"User99999999999999999999", 0, none},
    };
    for (const auto& [name, id, expected] : cases) {
        SCOPED_TRACE(name == nullptr ? "null" : ut::encodeUtf8(name));
        EXPECT_EQ(wut::getPSnumber(name), id);
        int custom = none;
        EXPECT_EQ(wut::isCustomPaperSize(custom, name), expected != none);
        EXPECT_EQ(custom, expected);
    }
}

TEST(PaperCatalogue, NameOutsideTheTable) {
    EXPECT_EQ(wut::getCanonicalPSname(0), OdString(L"User0"));
    EXPECT_EQ(wut::getCanonicalPSname(-1), OdString(L"User-1"));
    EXPECT_EQ(wut::getCanonicalPSname(118), OdString(L"PRC Envelope #10 Rotated"));
    EXPECT_EQ(wut::getCanonicalPSname(119), OdString(L"User119"));
    EXPECT_EQ(wut::getCanonicalPSname(-32768), OdString(L"User-32768"));
}

TEST(PaperCatalogue, Units) {
    // Each number begins a run of papers in the other unit; inches come first.
    const std::set<int> changes = {0,  8,  14, 15, 16, 27, 37, 42, 44, 47, 48,
                                   55, 56, 57, 59, 60, 71, 76, 84, 88, 90, 93};
    bool inches = false;
    for (int id = 0; id <= 65535; ++id) {
        inches = changes.contains(id) != inches;
        EXPECT_EQ(wut::getUnitsForDevice(static_cast<unsigned short>(id)),
                  inches ? OdDbPlotSettings::kInches : OdDbPlotSettings::kMillimeters)
            << id;
    }
}

TEST(BuiltInPapers, NamesAndNumbersAgree) {
    for (const auto& papers : builtInTables) {
        std::set<std::wstring> names;
        for (const PaperSizeInfo& paper : papers) {
            std::wstring name = paper.displayName;
            SCOPED_TRACE(ut::encodeUtf8(name));
            EXPECT_TRUE(names.insert(name).second);
            if (const std::size_t open = name.find(L'('); open != std::wstring::npos) {
                const std::wstring size = name.substr(open + 1);
                const std::size_t by = size.find(L" x ");
                double width = 0;
                double height = 0;
                EXPECT_TRUE(ut::scanDouble(size, width));
                EXPECT_TRUE(ut::scanDouble(size.substr(by + 3), height));
                EXPECT_EQ(paper.width, width);
                EXPECT_EQ(paper.height, height);
                const wchar_t* const words[] = {L"Inches)", L"MM)", L"Pixels)"};
                EXPECT_TRUE(name.ends_with(words[paper.units]));
            }
            std::replace(name.begin(), name.end(), L' ', L'_');
            EXPECT_EQ(paper.canonicalName, name);
        }
    }
}

/// The short names of the first group say no size: the full-bleed sheet of the same letter does.
TEST(BuiltInPapers, PlainSheetsHaveTheSizeOfTheirNamesakes) {
    const auto papers = builtInTables[0];
    for (const PaperSizeInfo& plain : papers.first(22)) {
        const std::wstring name = plain.displayName;
        const std::wstring middle = L" " + name.substr(name.rfind(L' ') + 1) + L" (";
        const bool inches = plain.units == OdDbPlotSettings::kInches;
        EXPECT_TRUE(std::ranges::any_of(papers.subspan(22, 45), [&](const PaperSizeInfo& paper) {
            const std::wstring other = paper.displayName;
            return ut::equalNoCase(other.substr(0, 4), inches ? name.substr(0, 4) : L"ISO ") &&
                   other.find(middle) != std::wstring::npos && paper.units == plain.units &&
                   paper.width == plain.width && paper.height == plain.height;
        })) << ut::encodeUtf8(name);
    }
}

TEST(BuiltInPapers, OrderAndMargins) {
    const std::tuple<std::size_t, std::size_t, const wchar_t*, const char*> cases[] = {
        {0, 0, L"A0", "0 0 0 0"},
        {0, 21, L"Arch_E", "0 0 0 0"},
        {0, 39, L"ISO_full_bleed_A4_(210.00_x_297.00_MM)",
         "0.793749988079071 0.793749988079071 0.79376220703125 0.793746948242188"},
        {0, 46, L"ISO_full_bleed_A0_(841.00_x_1189.00_MM)",
         "0.793749988079071 0.793749988079071 0.793701171875 0.79376220703125"},
        {0, 47, L"ARCH_full_bleed_E1_(30.00_x_42.00_Inches)", "0.03125 0.03125 0.03125 0.03125"},
        {0, 67, L"ISO_expand_A0_(841.00_x_1189.00_MM)", nullptr},
        {0, 84, L"ISO_A4_(210.00_x_297.00_MM)", nullptr},
        {0, 85, L"ARCH_expand_E1_(30.00_x_42.00_Inches)", nullptr},
        {0, 97, L"ANSI_expand_E_(34.00_x_44.00_Inches)", nullptr},
        {0, 114, L"ANSI_A_(8.50_x_11.00_Inches)", nullptr},
        {1, 0, L"VGA_(640.00_x_480.00_Pixels)", "0 0 0 0"},
        {1, 11, L"Sun_Standard_(900.00_x_1152.00_Pixels)", "0 0 0 0"},
        {2, 0, L"Letter_(8.50_x_11.00_Inches)", "0.25 0.25 0.25 0.25"},
        {2, 1, L"Legal_(8.50_x_14.0_Inches)", "0.25 0.25 0.25 0.25"},
        {2, 19, L"ARCH_E1_(42.00_x_30.00_Inches)", "0.25 0.75 0.25 0.75"},
        {2, 20, L"ISO_A4_(210.00_x_297.00_MM)", "7.5 20 7.5 20"},
        {2, 39, L"700mm_(700.00_x_1000.00_MM)", "7.5 20 7.5 20"},
    };
    for (const auto& [table, row, canonicalName, margins] : cases) {
        const PaperSizeInfo& paper = builtInTables[table][row];
        EXPECT_EQ(std::wstring(paper.canonicalName), canonicalName);
        if (margins != nullptr) {
            char text[128];
            std::snprintf(text, sizeof(text), "%.15g %.15g %.15g %.15g", paper.left, paper.bottom,
                          paper.right, paper.top);
            EXPECT_STREQ(text, margins) << ut::encodeUtf8(canonicalName);
        }
    }
    EXPECT_EQ(wut::cPdfPapersCount, 115u);
    EXPECT_EQ(wut::cImagePapersCount, 12u);
    EXPECT_EQ(wut::cNonePapersCount, 40u);
}

/// Single precision may cost digits, never more: each form keeps its margins to 1/10000 of a unit.
TEST(BuiltInPapers, RoundedMarginsStandForTheirGroup) {
    for (const PaperSizeInfo& paper : builtInTables[0].subspan(67)) {
        const bool inches = paper.units == OdDbPlotSettings::kInches;
        const bool expand = std::wstring_view(paper.displayName).find(L"expand") < 6;
        const double side = inches ? 0.2281 : 5.79375;
        const double end = inches ? (expand ? 0.42495 : 0.70054) : (expand ? 10.79375 : 17.79375);
        SCOPED_TRACE(ut::encodeUtf8(paper.displayName));
        EXPECT_EQ(paper.left, static_cast<double>(static_cast<float>(side)));
        EXPECT_EQ(paper.bottom, static_cast<double>(static_cast<float>(end)));
        EXPECT_NEAR(paper.right, side, 1e-4);
        EXPECT_NEAR(paper.top, end, 1e-4);
    }
}

int sign(int order) { return (order > 0) - (order < 0); }

TEST(Collation, Ascends) {
    const std::wstring nines(5000, L'9');
    const std::vector<std::wstring> names = {
        L"", L"#9", L"0", L"00", L"9x11", L"10x11", L"10x14", L"10x014", L"010x14", L"10x15", L"A",
        L"A-3", L"A2", L"a02", L"A2 (B)", L"A02 (b)", L"a2 (C)", L"A10", L"A10x", L"b4 (ISO)",
        L"B4 (JIS)", L"Envelope #9", L"Envelope #10", L"Envelope #10a", L"Envelope #" + nines,
        L"Envelope #1" + nines, L"\u00C9",
        // By UTF-16 units on every system, where this begins with a surrogate.
        L"\U0001F600", L"\uFFFD"};
    for (std::size_t i = 0; i < names.size(); ++i) {
        for (std::size_t j = 0; j < names.size(); ++j) {
            const int order = i < j ? -1 : (i > j ? 1 : 0);
            EXPECT_EQ(sign(ut::strCmpAlphanum(names[i].c_str(), names[j].c_str(), true)), order)
                << i << " " << j;
            EXPECT_EQ(wut::CmpCollatedNoCaseWx()(names[i], names[j]), order < 0) << i << " " << j;
        }
    }
    EXPECT_EQ(ut::strCmpAlphanum(L"\u00C9tui a4", L"\u00E9TUI A4", true), 0);
    EXPECT_LT(ut::strCmpAlphanum(L"A4", L"a3", false), 0);
}

TEST(Collation, IsAStrictWeakOrdering) {
    std::mt19937 random(7);
    std::vector<std::wstring> texts(90);
    for (std::wstring& text : texts) {
        for (auto length = random() % 6; length > 0; --length) {
            text += L"0012aAb-"[random() % 8];
        }
    }
    const auto order = [](const std::wstring& left, const std::wstring& right) {
        return sign(ut::strCmpAlphanum(left.c_str(), right.c_str(), true));
    };
    for (const std::wstring& a : texts) {
        for (const std::wstring& b : texts) {
            const int first = order(a, b);
            ASSERT_EQ(first, -order(b, a));
            for (const std::wstring& c : texts) {
                // Through an equal text nothing changes; two steps down lead down.
                if (const int second = order(b, c); first <= 0 && second <= 0) {
                    ASSERT_EQ(order(a, c), std::min(first, second))
                        << ut::encodeUtf8(a) << ' ' << ut::encodeUtf8(b) << ' '
                        << ut::encodeUtf8(c);
                }
            }
        }
    }
}

}  // namespace
