#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include <platen/edit_styles.h>
#include <platen/edit_table_presets.h>
#include <platen/inspect.h>
#include "edit/refusal.h"

namespace platen {
namespace {

constexpr std::array<const wchar_t*, 9> widths{L"0.13", L"0.18", L"0.25", L"0.35", L"0.5",
                                               L"0.7",  L"1.0",  L"1.4",  L"2.0"};

constexpr std::array<TablePreset, 8> presets{{
    {"iso-0.13", "colours 1 to 9: 0.13 to 2.0 mm as in ISO 128, others 0.13 mm"},
    {"iso-0.18", "colours 1 to 8: 0.18 to 2.0 mm as in ISO 128, others 0.18 mm"},
    {"iso-0.25", "colours 1 to 7: 0.25 to 2.0 mm as in ISO 128, others 0.25 mm"},
    {"iso-0.35", "colours 1 to 6: 0.35 to 2.0 mm as in ISO 128, others 0.35 mm"},
    {"iso-0.5", "colours 1 to 5: 0.5 to 2.0 mm as in ISO 128, others 0.5 mm"},
    {"black", "everything in black"},
    {"grayscale", "colours as grays"},
    {"screening", "colours 1 to 10: 100, 90 ... 10 % of ink"},
}};

/// What one colour or one named style has.
struct Step {
    const wchar_t* setting;
    std::wstring value;
    std::wstring name;
};

/// Those of a preset, in the order of the colours.
std::vector<Step> stepsOf(std::string_view preset) {
    constexpr std::string_view iso = "iso-";
    constexpr int fullInk = 100;
    constexpr int tenth = 10;
    std::vector<Step> steps;
    if (preset.starts_with(iso)) {
        const std::string_view first = preset.substr(iso.size());
        const auto from = std::ranges::find_if(widths, [&](std::wstring_view width) {
            return std::ranges::equal(width, first,
                                      [](wchar_t wide, char narrow) { return wide == narrow; });
        });
        for (auto width = from; width != widths.end(); ++width) {
            steps.push_back({L"lineweight", *width, std::wstring(*width) + L" mm"});
        }
    } else if (preset == "black") {
        steps.push_back({L"color", L"#000000", L"Black"});
    } else if (preset == "grayscale") {
        steps.push_back({L"grayscale", L"on", L"Grayscale"});
    } else if (preset == "screening") {
        for (int ink = fullInk; ink > 0; ink -= tenth) {
            const std::wstring percent = std::to_wstring(ink);
            steps.push_back({L"screening", percent, L"Screening " + percent});
        }
    }
    return steps;
}

EditResult apply(const Step& step, CPlotStyle& style, const CPlotStyleTable& table) {
    return setStyle(style, *findStyleSetting(step.setting), step.value, table.customLineweights());
}

}  // namespace

std::span<const TablePreset> tablePresets() { return presets; }

EditResult applyPreset(std::string_view preset, CPlotStyleTable& table) {
    const std::vector<Step> steps = stepsOf(preset);
    if (std::ranges::find(presets, preset, &TablePreset::name) == presets.end()) {
        EditRefusal refusal{EditFault::NotFound,
                            "there is no preset \"" + std::string(preset) + '"',
                            std::wstring(preset.begin(), preset.end()),
                            {}};
        for (const TablePreset& each : presets) {
            refusal.present.emplace_back(each.name.begin(), each.name.end());
        }
        return refusal;
    }
    if (hasStylePerColour(table)) {
        for (std::size_t place = 0; place < table.size(); ++place) {
            // Widths begin with that of all others, ink with all of it.
            const Step& step = steps[place < steps.size() ? place : 0];
            if (EditResult done = apply(step, *table.style(place), table); !done) {
                return done;
            }
        }
        return {};
    }
    for (const Step& step : steps) {
        CPlotStyle style;
        if (EditResult done = apply(step, style, table); !done) {
            return done;
        }
        if (!table.addStyle(step.name.c_str(), -1, &style)) {
            return refuse(EditFault::NameTaken, quoted(step.name) + " is there already");
        }
    }
    return {};
}

}  // namespace platen
