#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>

#include <platen/edit_items.h>
#include <platen/edit_styles.h>
#include <platen/style_words.h>
#include <platen/utcore.h>
#include "edit/refusal.h"
#include "plotstyle/palette.h"

namespace platen {
namespace {

using Weights = CCustomLineweightTable;

constexpr std::string_view objectWord = "object";
constexpr std::string_view standardWord = "standard";
constexpr std::string_view indexPrefix = "index:";
constexpr std::string_view packedPrefix = " (";

/// The integer that is all of `text`; hexadecimal ones are the bits of one.
std::optional<std::int32_t> integerIn(std::string_view text, int base = 10) {
    const char* end = text.data() + text.size();
    std::from_chars_result result{};
    std::int32_t number = 0;
    if (base == 10) {
        result = std::from_chars(text.data(), end, number);
    } else {
        std::uint32_t bits = 0;
        result = std::from_chars(text.data(), end, bits, base);
        number = static_cast<std::int32_t>(bits);
    }
    return result.ec == std::errc() && result.ptr == end ? std::optional(number) : std::nullopt;
}

std::optional<std::int32_t> integerFrom(std::string_view text, std::int32_t least,
                                        std::int32_t most) {
    const std::optional<std::int32_t> number = integerIn(text);
    return number && *number >= least && *number <= most ? number : std::nullopt;
}

std::string hexadecimal(std::int32_t value) {
    std::array<char, 8> digits{};
    const std::to_chars_result end = std::to_chars(digits.data(), digits.data() + digits.size(),
                                                   static_cast<std::uint32_t>(value), 16);
    return {digits.data(), end.ptr};
}

// --- Colours ---

constexpr std::uint32_t colorBits = 0x00FFFFFF;
constexpr std::uint32_t byIndex = 0xC3;
// Of policies.
constexpr std::int32_t ditherAlone = 1;
constexpr std::int32_t explicitColor = 4;

/// The colour that `color2rgb` shows, with red in bits 16 to 23.
std::uint32_t shownRgb(const CPlotStyle& style) {
    const auto reference = static_cast<std::uint32_t>(style.color2rgb());
    return ((reference & 0xFFU) << 16U) | (reference & 0xFF00U) | ((reference >> 16U) & 0xFFU);
}

/// The three numbers of a colour, behind what it shows: "#ff8000 (c2ff8000/c2ff8000/5)".
std::string packedText(const CPlotStyle& style) {
    return colorText(style) + std::string(packedPrefix) + hexadecimal(style.color()) + '/' +
           hexadecimal(style.mode_color()) + '/' + hexadecimal(style.color_policy()) + ')';
}

bool setPacked(CPlotStyle& style, std::string_view text) {
    std::array<std::int32_t, 3> numbers{};
    for (std::size_t index = 0; index < numbers.size(); ++index) {
        const std::size_t slash = text.find('/');
        const std::optional<std::int32_t> number = integerIn(text.substr(0, slash), 16);
        if (!number || (slash == std::string_view::npos) != (index + 1 == numbers.size())) {
            return false;
        }
        numbers[index] = *number;
        text.remove_prefix(slash == std::string_view::npos ? text.size() : slash + 1);
    }
    style.setPackedColor(numbers[0], numbers[1], numbers[2]);
    return true;
}

/// 1 to 255 in "index:7".
std::optional<std::int32_t> colorIndexIn(std::string_view text) {
    return text.starts_with(indexPrefix)
               ? integerFrom(text.substr(indexPrefix.size()), 1, CAciTable::count)
               : std::nullopt;
}

/// "#rrggbb" with red in bits 16 to 23.
std::optional<std::int32_t> rgbIn(std::string_view text) {
    constexpr std::size_t digits = 6;
    return text.size() == digits + 1 && text.front() == '#' ? integerIn(text.substr(1), 16)
                                                            : std::nullopt;
}

std::string setColor(CPlotStyle& style, std::string_view text, const Weights&) {
    const std::int32_t withoutColor = style.color_policy() & ~explicitColor;
    if (text == objectWord) {
        // With other policies `updateColor` would write a number that `color2rgb` shows as white.
        style.setPackedColor(-1, -1, withoutColor);
        return {};
    }
    if (const std::optional<std::int32_t> index = colorIndexIn(text)) {
        if (withoutColor == ditherAlone) {
            const auto packed =
                static_cast<std::int32_t>(byIndex << 24U | static_cast<std::uint32_t>(*index));
            style.setPackedColor(packed, packed, ditherAlone);
        } else {
            // Only beside that policy an index is one.
            style.updateColor(
                static_cast<int>(plot_style::palette[static_cast<std::size_t>(*index) - 1]));
        }
        return {};
    }
    if (const std::optional<std::int32_t> rgb = rgbIn(text)) {
        // In the order of bytes that makes `color2rgb` show it.
        style.updateColor(*rgb);
        return {};
    }
    const std::size_t end = text.find(packedPrefix);
    CPlotStyle packed = style;
    const bool done = text.ends_with(')') && end != std::string_view::npos &&
                      setPacked(packed, text.substr(end + packedPrefix.size(),
                                                    text.size() - end - packedPrefix.size() - 1));
    if (!done) {
        return "write #rrggbb, index:1 to index:255, or object";
    }
    if (colorText(packed) != text.substr(0, end)) {
        return "the numbers behind the colour mean another; leave them out";
    }
    style = packed;
    return {};
}

std::string exactColor(const CPlotStyle& style, const Weights& weights) {
    constexpr int anyColor = 0x123456;
    CPlotStyle other;
    other.setDither(style.isDither());
    other.setGrayScale(style.isGrayScale());
    other.updateColor(anyColor);
    std::string text = colorText(style);
    setColor(other, text, weights);
    const bool same = other.color() == style.color() && other.mode_color() == style.mode_color() &&
                      other.color_policy() == style.color_policy();
    return same ? text : packedText(style);
}

// --- Line weights ---

std::string weightText(const CPlotStyle& style, const Weights& weights) {
    const std::int32_t index = style.lineWeight();
    if (index == 0) {
        return std::string(objectWord);
    }
    const auto place = static_cast<std::size_t>(index);
    if (index > 0 && place < Weights::count) {
        std::size_t first = 0;
        while (weights[first] != weights[place]) {
            ++first;
        }
        if (first == place) {
            return numberInWords(weights[place]) + " mm";
        }
    }
    return std::string(indexPrefix) + std::to_string(index);
}

struct Length {
    double millimetres = 0;
    /// How far a line weight may be from it.
    double tolerance = 0;
    bool inside = false;
};

std::optional<Length> lengthIn(std::string_view text) {
    constexpr double millimetresPerInch = 25.4;
    constexpr double sameMillimetres = 0.0005;
    constexpr std::size_t fewestDecimals = 3;
    const bool inches = text.ends_with("in") || text.ends_with('"');
    if (inches || text.ends_with("mm")) {
        text.remove_suffix(text.ends_with('"') ? 1 : 2);
        text = text.substr(0, text.find_last_not_of(' ') + 1);
    }
    const std::optional<double> number = wholeNumber(text);
    if (!number) {
        return std::nullopt;
    }
    double value = *number;
    Length length;
    length.inside = Weights::checkLineWeightRange(value, inches);
    length.millimetres = inches ? value * millimetresPerInch : value;
    const std::size_t point = text.find('.');
    const std::size_t decimals = point == std::string_view::npos ? 0 : text.size() - point - 1;
    length.tolerance =
        inches ? 0.5 * std::pow(10.0, -static_cast<double>(std::max(fewestDecimals, decimals))) *
                     millimetresPerInch
               : sameMillimetres;
    return length;
}

std::string setWeight(CPlotStyle& style, std::string_view text, const Weights& weights) {
    constexpr auto last = static_cast<std::int32_t>(Weights::count) - 1;
    if (text == weightText(style, weights)) {
        return {};
    }
    if (text == objectWord) {
        style.setLineWeight(0);
        return {};
    }
    if (text.starts_with(indexPrefix)) {
        const auto index = integerFrom(text.substr(indexPrefix.size()), 0, last);
        if (!index) {
            return "line weights are index:0 to index:" + std::to_string(last);
        }
        style.setLineWeight(*index);
        return {};
    }
    const std::optional<Length> length = lengthIn(text);
    if (!length) {
        return "write millimetres, such as 0.35, inches, such as 0.014in, index:0 to index:26, or "
               "object";
    }
    std::size_t nearest = 0;
    for (std::size_t place = 1; place < Weights::count; ++place) {
        if (std::abs(weights[place] - length->millimetres) <
            std::abs(weights[nearest] - length->millimetres)) {
            nearest = place;
        }
    }
    if (!length->inside || std::abs(weights[nearest] - length->millimetres) > length->tolerance) {
        return "the table has no such line weight; the nearest is " +
               numberInWords(weights[nearest]) + " mm";
    }
    style.setLineWeight(static_cast<std::int32_t>(nearest));
    return {};
}

// --- Others ---

constexpr std::int32_t mostInteger = std::numeric_limits<std::int32_t>::max();

template <auto Getter>
std::string integerText(const CPlotStyle& style, const Weights&) {
    return std::to_string((style.*Getter)());
}

template <auto Getter, auto Setter, std::int32_t Most>
std::string setInteger(CPlotStyle& style, std::string_view text, const Weights&) {
    if (text == std::to_string((style.*Getter)())) {
        return {};
    }
    if (text == standardWord) {
        (style.*Setter)((CPlotStyle().*Getter)());
        return {};
    }
    const std::optional<std::int32_t> number = integerFrom(text, 0, Most);
    if (!number) {
        return Most == mostInteger ? "write a whole number from 0, or standard"
                                   : "write a whole number from 0 to " + std::to_string(Most);
    }
    (style.*Setter)(*number);
    return {};
}

template <auto Getter>
std::string flagText(const CPlotStyle& style, const Weights&) {
    return (style.*Getter)() ? "on" : "off";
}

template <auto Setter>
std::string setFlag(CPlotStyle& style, std::string_view text, const Weights&) {
    constexpr std::array on{"on", "yes", "true", "TRUE"};
    constexpr std::array off{"off", "no", "false", "FALSE"};
    const bool wanted = std::ranges::find(on, text) != on.end();
    if (!wanted && std::ranges::find(off, text) == off.end()) {
        return "write on or off";
    }
    (style.*Setter)(wanted);
    return {};
}

std::string patternText(const CPlotStyle& style, const Weights&) {
    return numberInWords(style.linepattern_size());
}

std::string setPattern(CPlotStyle& style, std::string_view text, const Weights&) {
    if (text == numberInWords(style.linepattern_size())) {
        return {};
    }
    const std::optional<double> size = wholeNumber(text);
    if (!size || *size < 0) {
        return "write a number from 0, with a decimal point";
    }
    style.setLinePatternSize(*size);
    return {};
}

std::string descriptionText(const CPlotStyle& style, const Weights&) {
    return ut::encodeUtf8(style.desc());
}

std::string setDescription(CPlotStyle& style, std::string_view text, const Weights&) {
    std::wstring wide;
    static_cast<void>(ut::decodeUtf8(text, wide));
    style.setDesc(std::move(wide));
    return {};
}

struct Entry {
    std::string (*text)(const CPlotStyle&, const Weights&);
    /// Says what values look like when `text` is none; empty when it was set.
    std::string (*set)(CPlotStyle&, std::string_view text, const Weights&);
};

using Style = CPlotStyle;

constexpr std::array<StyleSetting, 14> settings{{
    {"dither", "dither", "on, off"},
    {"grayscale", "grayscale", "on, off"},
    {"color", "color", "#rrggbb, index:1 to index:255, object"},
    {"pen", "physical_pen_number", "a number"},
    {"virtual_pen", "virtual_pen_number", "a number"},
    {"screening", "screen", "0 to 100 (percent)"},
    {"pattern_size", "linepattern_size", "a number with a decimal point"},
    {"linetype", "linetype", "a number, standard"},
    {"adaptive", "adaptive_linetype", "on, off"},
    {"lineweight", "lineweight", "0.35, 0.35mm, 0.014in, index:0 to index:26, object"},
    {"fill", "fill_style", "a number, standard"},
    {"ends", "end_style", "a number, standard"},
    {"joins", "join_style", "a number, standard"},
    {"description", "description", "any text"},
}};

constexpr std::array<Entry, 14> entries{{
    {flagText<&Style::isDither>, setFlag<&Style::setDither>},
    {flagText<&Style::isGrayScale>, setFlag<&Style::setGrayScale>},
    {exactColor, setColor},
    {integerText<&Style::pen>, setInteger<&Style::pen, &Style::setPen, mostInteger>},
    {integerText<&Style::virtualPen>,
     setInteger<&Style::virtualPen, &Style::setVirtualPen, mostInteger>},
    {integerText<&Style::screen>, setInteger<&Style::screen, &Style::setScreen, 100>},
    {patternText, setPattern},
    {integerText<&Style::lineType>, setInteger<&Style::lineType, &Style::setLineType, mostInteger>},
    {flagText<&Style::isAdaptiveLinetype>, setFlag<&Style::setAdaptiveLinetype>},
    {weightText, setWeight},
    {integerText<&Style::fillStyle>,
     setInteger<&Style::fillStyle, &Style::setFillStyle, mostInteger>},
    {integerText<&Style::endStyle>, setInteger<&Style::endStyle, &Style::setEndStyle, mostInteger>},
    {integerText<&Style::joinStyle>,
     setInteger<&Style::joinStyle, &Style::setJoinStyle, mostInteger>},
    {descriptionText, setDescription},
}};

static_assert(settings.size() == entries.size());

const Entry& entryOf(const StyleSetting& setting) {
    return entries[static_cast<std::size_t>(&setting - settings.data())];
}

}  // namespace

std::span<const StyleSetting> styleSettings() { return settings; }

const StyleSetting* findStyleSetting(std::wstring_view word) {
    const std::string wanted = ut::encodeUtf8(word);
    const auto found = std::ranges::find_if(settings, [&](const StyleSetting& setting) {
        return setting.word == wanted || setting.key == wanted;
    });
    return found == settings.end() ? nullptr : &*found;
}

std::string colorText(const CPlotStyle& style) {
    constexpr std::size_t digits = 6;
    const auto color = static_cast<std::uint32_t>(style.color());
    // The second is what `updateColor` writes for the object's colour beside other policies.
    if (style.color() == -1 || color == (byIndex << 24U | colorBits)) {
        return std::string(objectWord);
    }
    const std::uint32_t index = color & colorBits;
    const bool isIndex = style.color_policy() == ditherAlone && color >> 24U == byIndex;
    if (isIndex && index >= 1 && index <= CAciTable::count) {
        return std::string(indexPrefix) + std::to_string(index);
    }
    const std::string text =
        hexadecimal(static_cast<std::int32_t>(isIndex ? index : shownRgb(style)));
    return '#' + std::string(digits - text.size(), '0') + text;
}

std::string settingText(const CPlotStyle& style, const StyleSetting& setting,
                        const CCustomLineweightTable& weights) {
    return entryOf(setting).text(style, weights);
}

EditResult setStyle(CPlotStyle& style, const StyleSetting& setting, std::wstring_view value,
                    const CCustomLineweightTable& weights) {
    const std::string fault = entryOf(setting).set(style, ut::encodeUtf8(value), weights);
    return fault.empty()
               ? EditResult()
               : refuse(EditFault::ValueInvalid,
                        std::string(setting.word) + " cannot be " + quoted(value) + ": " + fault);
}

EditResult lineWeightOf(std::wstring_view text, double& millimetres) {
    const std::optional<Length> length = lengthIn(ut::encodeUtf8(text));
    if (!length || !length->inside) {
        return refuse(EditFault::ValueInvalid,
                      quoted(text) + " is no line weight: " +
                          (length ? "they are from 0 to 200 mm"
                                  : "write millimetres, such as 0.35, or inches, such as 0.014in"));
    }
    millimetres = length->millimetres;
    return {};
}

}  // namespace platen
