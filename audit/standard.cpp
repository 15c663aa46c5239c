#include <charconv>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <platen/compare.h>
#include <platen/inspect.h>
#include <platen/plotstyle.h>
#include <platen/utcore.h>
#include "audit/facts.h"

namespace platen {
namespace {

bool isTable(FileKind kind) { return kind == FileKind::Ctb || kind == FileKind::Stb; }

/// The colours that a line of a comparison begins with: "Color 1-9, 12: ...".
std::vector<int> colorsNamedBy(std::string_view line) {
    constexpr std::string_view begin = "Color ";
    std::vector<int> colors;
    if (!line.starts_with(begin)) {
        return colors;
    }
    line.remove_prefix(begin.size());
    int first = 0;
    int last = 0;
    const auto take = [&](int& number) {
        const char* end = line.data() + line.size();
        const std::from_chars_result read = std::from_chars(line.data(), end, number);
        line.remove_prefix(static_cast<std::size_t>(read.ptr - line.data()));
        return read.ec == std::errc() && number > 0 &&
               std::cmp_less_equal(number, CAciTable::count);
    };
    while (take(first)) {
        last = first;
        if (line.starts_with('-')) {
            line.remove_prefix(1);
            if (!take(last)) {
                break;
            }
        }
        for (int color = first; color <= last; ++color) {
            colors.push_back(color);
        }
        if (!line.starts_with(", ")) {
            break;
        }
        line.remove_prefix(2);
    }
    return colors;
}

/// Makes the file as its standard, and keeps what it was.
std::vector<std::wstring> takingOver(const std::wstring& standard, const std::wstring& file) {
    return {L"platen", L"apply", argumentOf(standard), argumentOf(file), L"--in-place=.bak"};
}

}  // namespace

void compareWithStandard(const PiaInput& input, const AuditStandards& standards,
                         const AuditSettings& settings, AuditData& data) {
    const auto found = settings.oneStandard
                           ? standards.files.begin()
                           : standards.files.find(lowerCase(ut::fileNameOf(data.file)));
    if (found == standards.files.end() || fullPathOf(found->second.file) == data.fullPath) {
        return;
    }
    const auto& [file, kind] = found->second;
    const bool comparable = kind == *data.kind || (isTable(kind) && isTable(*data.kind));
    if (!comparable) {
        if (!settings.oneStandard) {
            data.findings.push_back(findingAbout(data, AuditCode::StandardDeviation,
                                                 std::string("it is a ") + kindName(*data.kind) +
                                                     ", and the standard of that name is a " +
                                                     kindName(kind)));
        }
        return;
    }
    // Trees belong to one thread, so that each file is compared with one of its own.
    PiaInput standard;
    if (!standard.open(file.c_str(), settings.reading)) {
        return;
    }
    Comparison comparison = compare(input, standard);
    // Styles of other names have nothing to do with each other.
    const bool meansNothing =
        settings.oneStandard && kind != *data.kind && !comparison.throughColors;
    if (comparison.equal() || meansNothing) {
        return;
    }
    comparison.container.clear();
    AuditFinding finding = findingAbout(
        data, AuditCode::StandardDeviation,
        "it differs from the standard " + nameInQuotes(file) + " in " +
            countInWords(comparison.differences.size(), "place", "places") + " (here -> there)");
    for (std::string& line : describe(comparison)) {
        std::vector<int> colors = colorsNamedBy(line);
        addDetail(finding, {.text = std::move(line), .colors = std::move(colors)},
                  settings.mostDetails);
    }
    // One standard for all configurations would give all of them one printer.
    if (!settings.oneStandard || isTable(kind)) {
        finding.command = takingOver(file, data.file);
    }
    data.findings.push_back(std::move(finding));
}

}  // namespace platen
