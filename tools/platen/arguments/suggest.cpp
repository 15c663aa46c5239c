#include "tools/platen/arguments/suggest.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <utility>

#include <platen/utcore.h>

namespace cli::arguments {
namespace {

/// More than these help nobody, and files may hold any number of names of any length.
constexpr std::size_t mostShown = 5;
constexpr std::size_t mostListed = 30;
constexpr std::size_t mostCompared = 5000;
constexpr std::size_t longestCompared = 60;

std::wstring comparable(std::wstring_view name) {
    std::wstring lower(name.substr(0, longestCompared));
    std::transform(lower.begin(), lower.end(), lower.begin(), ut::toLower);
    return lower;
}

/// The number of letters to add, take away, change or swap with the next.
std::size_t distance(std::wstring_view one, std::wstring_view other) {
    std::vector<std::size_t> row(other.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    std::vector<std::size_t> above = row;
    std::vector<std::size_t> twoAbove = row;
    for (std::size_t line = 1; line <= one.size(); ++line) {
        std::swap(twoAbove, above);
        std::swap(above, row);
        row[0] = line;
        for (std::size_t column = 1; column <= other.size(); ++column) {
            const bool same = one[line - 1] == other[column - 1];
            row[column] = std::min(
                {above[column - 1] + (same ? 0 : 1), above[column] + 1, row[column - 1] + 1});
            const bool swapped = line > 1 && column > 1 && one[line - 1] == other[column - 2] &&
                                 one[line - 2] == other[column - 1];
            if (swapped) {
                row[column] = std::min(row[column], twoAbove[column - 2] + 1);
            }
        }
    }
    return row.back();
}

std::string quotedList(const std::vector<std::wstring>& names) {
    std::string list;
    for (const std::wstring& name : names) {
        list += (list.empty() ? "\"" : ", \"") + ut::encodeUtf8(name) + '"';
    }
    return list;
}

}  // namespace

std::vector<std::wstring> nearNames(std::wstring_view wanted,
                                    const std::vector<std::wstring>& names) {
    const std::wstring sought = comparable(wanted);
    const std::size_t compared = std::min(names.size(), mostCompared);
    constexpr std::size_t shortestPart = 2;
    constexpr std::size_t lettersPerMistake = 3;
    std::size_t nearest = std::max<std::size_t>(1, sought.size() / lettersPerMistake);
    std::vector<std::wstring> containing;
    std::vector<std::wstring> similar;
    for (std::size_t index = 0; index < compared; ++index) {
        const std::wstring name = comparable(names[index]);
        if (sought.size() >= shortestPart && name.find(sought) != std::wstring::npos) {
            containing.push_back(names[index]);
        }
        // Papers have their sizes in brackets, which nobody types.
        const std::size_t mistakes =
            std::min(distance(sought, name), distance(sought, name.substr(0, name.find(L" ("))));
        if (mistakes < nearest) {
            similar.clear();
            nearest = mistakes;
        }
        if (mistakes == nearest) {
            similar.push_back(names[index]);
        }
    }
    std::vector<std::wstring>& near = containing.empty() ? similar : containing;
    near.resize(std::min(near.size(), mostShown));
    return near;
}

std::string suggestion(std::wstring_view wanted, const std::vector<std::wstring>& names,
                       std::string_view otherwise) {
    if (const std::vector<std::wstring> near = nearNames(wanted, names); !near.empty()) {
        return "; did you mean " + quotedList(near) + "?";
    }
    if (!names.empty() && names.size() <= mostListed) {
        return "; there are " + quotedList(names);
    }
    return otherwise.empty() ? std::string() : "; " + std::string(otherwise);
}

}  // namespace cli::arguments
