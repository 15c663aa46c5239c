#include <gmock/gmock.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include <platen/plotstyle.h>
#include <platen/utcore.h>
#include "plotstyle/index_name.h"
#include "plotstyle/palette.h"

namespace {

constexpr std::int32_t packed(std::uint32_t bits) { return static_cast<std::int32_t>(bits); }

/// A style of every field's own value, in the stream's layout.
std::string streamOf(std::int32_t color, std::int32_t modeColor, std::int32_t policy,
                     double patternSize = 0.25) {
    ut::COBinStream out;
    out.write(std::wstring_view(L"Thin_red"));
    out.write(std::wstring_view(L"Thin red"));
    out.write(std::wstring_view(L"for sections"));
    for (const std::int32_t number : {color, modeColor, policy, 3, 4, 60}) {
        out.write(number);
    }
    out.write(patternSize);
    out.write(std::int32_t{12});
    out.write(false);
    for (const std::int32_t number : {7, 65, 1, 2}) {
        out.write(number);
    }
    return out.bytes();
}

CPlotStyle styleOf(std::int32_t color, std::int32_t modeColor, std::int32_t policy,
                   double patternSize = 0.25) {
    const std::string bytes = streamOf(color, modeColor, policy, patternSize);
    ut::CIBinStream in(bytes);
    CPlotStyle style;
    EXPECT_TRUE(style.read(in));
    EXPECT_EQ(in.remaining(), 0U);
    return style;
}

TEST(PlotStyle, StreamHoldsEveryFieldInOrder) {
    const CPlotStyle style = styleOf(packed(0xC3000005), packed(0xC2010203), 5);
    EXPECT_EQ(style.name(), L"Thin_red");
    EXPECT_EQ(style.locName(), L"Thin red");
    EXPECT_EQ(style.desc(), L"for sections");
    const std::int32_t numbers[] = {style.color(),    style.mode_color(), style.color_policy(),
                                    style.pen(),      style.virtualPen(), style.screen(),
                                    style.lineType(), style.lineWeight(), style.fillStyle(),
                                    style.endStyle(), style.joinStyle()};
    EXPECT_THAT(numbers, testing::ElementsAre(packed(0xC3000005), packed(0xC2010203), 5, 3, 4, 60,
                                              12, 7, 65, 1, 2));
    EXPECT_TRUE(style.linepattern_size() == 0.25 && !style.isAdaptiveLinetype());
    ut::COBinStream out;
    EXPECT_TRUE(style.write(out));
    EXPECT_EQ(out.bytes(), streamOf(packed(0xC3000005), packed(0xC2010203), 5));
}

TEST(PlotStyle, TruncatedStreamLeavesTheStyle) {
    const std::string whole = streamOf(1, 2, 3);
    const CPlotStyle before = styleOf(packed(0xC3000005), 9, 5, 0.75);
    for (std::size_t length = 0; length < whole.size(); ++length) {
        CPlotStyle style = before;
        style.updateName(L"kept");
        ut::CIBinStream in(std::string_view(whole).substr(0, length));
        EXPECT_FALSE(style.read(in)) << length;
        EXPECT_TRUE(style.isEqual(before, true)) << length;
        EXPECT_EQ(style.name(), L"kept") << length;
    }
}

TEST(PlotStyle, EqualityIsThatOfTheNumbers) {
    const CPlotStyle style = styleOf(1, 2, 3);
    CPlotStyle other = style;
    other.updateName(L"another");
    EXPECT_TRUE(style.isEqual(other, true));
    other.setDesc(L"another");
    EXPECT_TRUE(style.isEqual(other, false));
    EXPECT_FALSE(style.isEqual(other, true));

    EXPECT_TRUE(styleOf(1, 2, 3, 0.0).isEqual(styleOf(1, 2, 3, -0.0), false));
    const CPlotStyle nan = styleOf(1, 2, 3, std::numeric_limits<double>::quiet_NaN());
    EXPECT_FALSE(nan.isEqual(nan, false));

    // Any byte of the numbers makes a difference; the texts come first.
    const std::string bytes = streamOf(1, 2, 3);
    const std::size_t numbers = bytes.size() - (11 * 4 + 8 + 1);
    for (std::size_t at = numbers; at < bytes.size(); ++at) {
        std::string changed = bytes;
        changed[at] ^= 1;
        ut::CIBinStream in(changed);
        ASSERT_TRUE(other.read(in)) << at;
        EXPECT_FALSE(style.isEqual(other, false)) << at;
    }
}

TEST(PlotStyle, NamesLoseTheirWhiteSpace) {
    for (const auto& [given, name] : {std::pair(L"My Style", L"My_Style"),
                                      {L" a\t b ", L"_a__b_"},
                                      {L"\u2003wide\u3000", L"_wide_"},
                                      {L"plain", L"plain"}}) {
        CPlotStyle style;
        style.updateName(given);
        EXPECT_EQ(style.name(), name);
        EXPECT_EQ(style.locName(), given);
        style.updateName(style.locName().c_str());
        EXPECT_EQ(style.name(), name) << "named by its own text";
    }
}

TEST(PlotStyle, PolicyBitsChangeAlone) {
    CPlotStyle style = styleOf(1, 2, 4);
    style.setDither(true);
    EXPECT_TRUE(style.isDither() && !style.isGrayScale());
    style.setGrayScale(true);
    EXPECT_EQ(style.color_policy(), 7);
    style.setDither(false);
    EXPECT_TRUE(!style.isDither() && style.isGrayScale());
    style.setGrayScale(false);
    EXPECT_EQ(style.color_policy(), 4);
}

TEST(PlotStyleColor, UpdateFollowsThePolicy) {
    struct Case {
        const char* what;
        std::int32_t color, modeColor, policy;
        std::uint32_t colorRef;
        bool changed;
        std::uint32_t newColor, newModeColor;
        std::int32_t newPolicy;
    };
    constexpr std::uint32_t own = 0xFFFFFFFF;
    const Case cases[] = {
        {"own colour already, mode colour stays", -1, 5, 5, own, false, own, 5, 1},
        {"to own colour", 7, 7, 5, own, true, own, own, 1},
        {"own colour without dither", -1, -1, 4, own, true, 0xC3FFFFFF, 0xC3FFFFFF, 0},
        {"own colour in gray", 7, 8, 7, own, true, 0xC3FFFFFF, 0xC3FFFFFF, 3},
        {"own colour in gray again", packed(0xC3FFFFFF), packed(0xC3FFFFFF), 3, own, false,
         0xC3FFFFFF, 0xC3FFFFFF, 3},
        {"red of the palette stays in the low byte", -1, -1, 1, 0x000000FF, true, 0xC30000FF,
         0xC30000FF, 5},
        {"the top byte is not part of the colour", -1, -1, 1, 0x7F00A5FF, true, 0xC3FFBF00,
         0xC200A5FF, 5},
        {"a copy of a primary is a match of its own", -1, -1, 1, 0x000101FF, true, 0xC30101FF,
         0xC30101FF, 5},
        {"gray takes the explicit bit away", -1, -1, 7, 0x00000000, true, 0xC3000000, 0xC3000000,
         3},
        {"nearest has blue in the low byte", -1, -1, 1, 0x000002FE, true, 0xC3FF0101, 0xC20002FE,
         5},
        {"white is no palette colour", -1, -1, 1, 0x00FFFFFF, true, 0xC3FCFCFC, 0xC2FFFFFF, 5},
        {"of two equally near the lower index, 154 and 164", -1, -1, 1, 0x00812F05, true,
         0xC3003F7F, 0xC2812F05, 5},
        {"of two equally near the lower index, 173 and 192", -1, -1, 1, 0x00CF294C, true,
         0xC35252A5, 0xC2CF294C, 5},
        {"only the mode colour differs", packed(0xC3FCFCFC), 0, 5, 0x00FFFFFE, true, 0xC3FCFCFC,
         0xC2FFFFFE, 5},
    };
    for (const Case& c : cases) {
        CPlotStyle style = styleOf(c.color, c.modeColor, c.policy);
        EXPECT_EQ(style.updateColor(packed(c.colorRef)), c.changed) << c.what;
        EXPECT_EQ(style.color(), packed(c.newColor)) << c.what;
        EXPECT_EQ(style.mode_color(), packed(c.newModeColor)) << c.what;
        EXPECT_EQ(style.color_policy(), c.newPolicy) << c.what;
    }
}

TEST(PlotStyleColor, DisplayColor) {
    struct Case {
        std::uint32_t color, modeColor;
        std::int32_t policy;
        std::uint32_t shown;
    };
    const Case cases[] = {
        {0xFFFFFFFF, 0xC2112233, 5, 0xFFFFFFFF}, {0xC3000005, 0xC2112233, 1, 5},
        {0xC3FF8001, 0xC2112233, 1, 0xFFFF8001}, {0xC2112233, 0, 1, 0x00332211},
        {0x11223344, 0, 1, 0x00443322},          {0xC3000005, 0xC2112233, 5, 0x00332211},
        {0xC3000005, 0xC2112233, 3, 0x00332211}, {0xC3000005, 0xC3000005, 0, 0x00050000},
        {0xC3000005, 0xFFFFFFFF, 0, 0x00FFFFFF},
    };
    for (const Case& c : cases) {
        const CPlotStyle style = styleOf(packed(c.color), packed(c.modeColor), c.policy);
        EXPECT_EQ(style.color2rgb(), packed(c.shown)) << std::hex << c.color << ' ' << c.policy;
    }
}

TEST(PlotStyleColor, PaletteKeepsItsShape) {
    const std::set<std::uint32_t> distinct(plot_style::palette.begin(), plot_style::palette.end());
    EXPECT_EQ(distinct.size(), 255U);
    const std::pair<std::size_t, std::uint32_t> entries[] = {
        // The copies of the primaries are one step away in their zero components.
        {1, 0xFF0000},
        {10, 0xFF0101},
        {2, 0xFFFF00},
        {50, 0xFFFF01},
        {3, 0x00FF00},
        {90, 0x01FF01},
        {4, 0x00FFFF},
        {130, 0x01FFFF},
        {5, 0x0000FF},
        {170, 0x0101FF},
        {6, 0xFF00FF},
        {210, 0xFF01FF},
        // Black, the grays, and one of each quarter of the circle.
        {7, 0x000000},
        {250, 0x545454},
        {253, 0xBABABA},
        {255, 0xFCFCFC},
        {21, 0xFF9F7F},
        {83, 0x67A552},
        {127, 0x264C42},
        {218, 0x260026}};
    for (const auto& [index, color] : entries) {
        EXPECT_EQ(plot_style::palette[index - 1], color) << index;
    }
}

TEST(LineWeights, Range) {
    struct Case {
        double value;
        bool inches, inside;
        double result;
    };
    constexpr double maximumInches = 7.874015748031496;
    for (const Case& c :
         {Case{-1.0, false, false, 0.0}, Case{-0.0, false, true, 0.0}, Case{1e-7, false, true, 0.0},
          Case{1.3e-7, false, true, 1.3e-7}, Case{200.0, false, true, 200.0},
          Case{200.0 + 1e-7, false, true, 200.0 + 1e-7}, Case{200.0 + 2e-7, false, false, 200.0},
          Case{250.0, false, false, 200.0}, Case{maximumInches, true, true, maximumInches},
          Case{8.0, true, false, maximumInches}}) {
        double value = c.value;
        EXPECT_EQ(CCustomLineweightTable::checkLineWeightRange(value, c.inches), c.inside)
            << c.value;
        EXPECT_EQ(value, c.result) << c.value;
    }
}

TEST(LineWeights, TypedText) {
    const struct {
        const wchar_t* text;
        bool inside;
        double result;
    } cases[] = {{L"0.25", true, 0.25}, {L"1e1", true, 10}, {L"250", false, 200},
                 {L"-3", false, 0},     {L"", false, 5},    {L"0.25mm", false, 5},
                 {L"thin", false, 5}};
    for (const auto& [text, inside, result] : cases) {
        double value = 5;
        EXPECT_EQ(CCustomLineweightTable::checkLineWeightRange(value, text, false), inside) << text;
        EXPECT_EQ(value, result) << text;
    }
}

TEST(IndexNames, DigitsOnlyAndInRange) {
    const auto parse = [](const wchar_t* name, std::size_t count) {
        std::size_t index = 0;
        return plot_style::parseIndex(name, count, index) ? std::optional(index) : std::nullopt;
    };
    EXPECT_EQ(parse(L"254", 255), 254U);
    EXPECT_EQ(parse(L"007", 8), 7U);
    EXPECT_EQ(parse(L"0", 0), std::nullopt);
    for (const wchar_t* name : {L"", L"-1", L"+1", L" 1", L"1 ", L"1x", L"\u0661", L"9",
                                L"18446744073709551617", L"4294967297"}) {
        EXPECT_EQ(parse(name, 9), std::nullopt) << name;
    }
    for (const int number :
         {0, 10, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        EXPECT_EQ(plot_style::IndexName(number).view(), std::to_wstring(number));
    }
}

TEST(ColorToNamed, PatternSizesCompareAsNumbers) {
    const std::unique_ptr<CPlotStyleTable> source(CPlotStyleTable::create(true, nullptr));
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    std::size_t index = 0;
    for (const double size : {0.0, nan, -0.0, nan, 1.0}) {
        *source->style(index++) = styleOf(0, 0, 0, size);
    }
    const std::unique_ptr<CPlotStyleTable> table(ctb2stb(*source, nullptr));
    index = 0;
    for (const std::size_t position : {1U, 2U, 1U, 3U, 4U, 5U, 5U}) {
        EXPECT_EQ(table->ACI()->at(index++), table->style(position)) << index;
    }
}

}  // namespace
