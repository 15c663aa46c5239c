#include <algorithm>
#include <optional>
#include <set>

#include <platen/edit_styles.h>
#include <platen/utcore.h>
#include "edit/refusal.h"
#include "plotstyle/index_name.h"

namespace platen {
namespace {

/// True when all of `text` fits `pattern`, in which * stands for any characters and ? for one.
bool fits(std::wstring_view text, std::wstring_view pattern) {
    std::size_t at = 0;
    std::size_t next = 0;
    std::optional<std::size_t> star;
    std::size_t resume = 0;
    while (at < text.size()) {
        if (next < pattern.size() && pattern[next] == L'*') {
            star = next++;
            resume = at;
        } else if (next < pattern.size() &&
                   (pattern[next] == L'?' || ut::toLower(pattern[next]) == ut::toLower(text[at]))) {
            ++next;
            ++at;
        } else if (star) {
            next = *star + 1;
            at = ++resume;
        } else {
            return false;
        }
    }
    return std::all_of(pattern.begin() + static_cast<std::ptrdiff_t>(next), pattern.end(),
                       [](wchar_t character) { return character == L'*'; });
}

bool areNumbers(std::wstring_view text) {
    return !text.empty() && text.find_first_not_of(L"0123456789-, ") == std::wstring_view::npos;
}

std::wstring_view trimmed(std::wstring_view text) {
    const std::size_t first = text.find_first_not_of(L' ');
    return first == std::wstring_view::npos
               ? std::wstring_view()
               : text.substr(first, text.find_last_not_of(L' ') - first + 1);
}

EditResult notThere(std::wstring_view wanted, const CPlotStyleTable& table, std::string reason) {
    EditRefusal refusal{EditFault::NotFound, std::move(reason), std::wstring(wanted), {}};
    for (std::size_t place = 0; place < table.size(); ++place) {
        refusal.present.push_back(table.style(place)->locName());
    }
    return refusal;
}

/// "1-9,250" as places.
EditResult numbersIn(std::wstring_view text, std::size_t count, std::set<std::size_t>& places) {
    while (!text.empty()) {
        const std::size_t comma = std::min(text.find(L','), text.size());
        const std::wstring_view range = trimmed(text.substr(0, comma));
        text.remove_prefix(std::min(comma + 1, text.size()));
        const std::size_t dash = std::min(range.find(L'-'), range.size());
        std::size_t first = 0;
        std::size_t last = 0;
        const std::wstring_view from = trimmed(range.substr(0, dash));
        const std::wstring_view to = dash == range.size() ? from : trimmed(range.substr(dash + 1));
        if (!plot_style::parseIndex(from, count + 1, first) ||
            !plot_style::parseIndex(to, count + 1, last) || first == 0 || first > last) {
            return refuse(
                EditFault::NotFound,
                quoted(range) + " is no number and no range from 1 to " + std::to_string(count));
        }
        for (std::size_t number = first; number <= last; ++number) {
            places.insert(number - 1);
        }
    }
    return {};
}

}  // namespace

EditResult TableEditor::select(std::wstring_view text, std::vector<std::size_t>& places) const {
    std::set<std::size_t> found;
    if (text.starts_with(L'=')) {
        std::size_t model = 0;
        if (EditResult one = selectOne(text.substr(1), model); !one) {
            return one;
        }
        for (std::size_t place = 0; place < table_.size(); ++place) {
            if (table_.style(place)->isEqual(*table_.style(model), false)) {
                found.insert(place);
            }
        }
        places.assign(found.begin(), found.end());
        return {};
    }
    for (std::size_t place = 0; place < table_.size(); ++place) {
        const CPlotStyle& style = *table_.style(place);
        if (ut::equalNoCase(style.locName(), text) || ut::equalNoCase(style.name(), text)) {
            found.insert(place);
        }
    }
    if (found.empty() && areNumbers(text)) {
        if (EditResult numbers = numbersIn(text, table_.size(), found); !numbers) {
            return numbers;
        }
    }
    if (found.empty()) {
        for (std::size_t place = 0; place < table_.size(); ++place) {
            const CPlotStyle& style = *table_.style(place);
            if (fits(style.locName(), text) || fits(style.name(), text)) {
                found.insert(place);
            }
        }
    }
    if (found.empty()) {
        return notThere(text, table_, "no style is called " + quoted(text));
    }
    places.assign(found.begin(), found.end());
    return {};
}

EditResult TableEditor::selectOne(std::wstring_view text, std::size_t& place) const {
    std::vector<std::size_t> places;
    if (EditResult found = select(text, places); !found) {
        return found;
    }
    if (places.size() > 1) {
        return refuse(
            EditFault::Ambiguous,
            quoted(text) + " names " + std::to_string(places.size()) + " styles, and one is meant");
    }
    place = places.front();
    return {};
}

}  // namespace platen
