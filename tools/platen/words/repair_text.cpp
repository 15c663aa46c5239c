#include "tools/platen/words/repair_text.h"

#include <cstddef>
#include <map>

namespace cli::words {
namespace {

/// Alike ones that are shown; a cut table lacks hundreds of styles in the same way.
constexpr std::size_t shownOfEach = 5;

std::string counted(std::size_t count, const std::string& word) {
    return std::to_string(count) + ' ' + word +
           (count == 1            ? ""
            : word.ends_with("s") ? "es"
                                  : "s");
}

/// Prints notes, and after the last of those that are alike how many more there are.
template <class Notes, class KindOf>
void printNotes(const std::string& file, const Notes& notes, KindOf kindOf,
                const Console& console) {
    std::map<decltype(kindOf(*notes.begin())), std::size_t> left;
    for (const auto& note : notes) {
        ++left[kindOf(note)];
    }
    std::map<decltype(kindOf(*notes.begin())), std::size_t> shown;
    for (const auto& note : notes) {
        const auto kind = kindOf(note);
        if (++shown[kind] <= shownOfEach) {
            console.out << file << ": " << platen::describe(note) << '\n';
            --left[kind];
        } else if (shown[kind] == shownOfEach + 1) {
            console.out << file << ": ... and " << left[kind]
                        << " more like this; --json lists them\n";
        }
    }
}

}  // namespace

void printRepair(const std::string& file, const platen::RepairResult& result,
                 const Console& console) {
    if (!result) {
        return;
    }
    const std::string name = printable(file);
    printNotes(
        name, result.assumptions, [](const platen::Assumption& note) { return note.code; },
        console);
    printNotes(
        name, result.losses, [](const platen::Loss& note) { return note.unit; }, console);
    if (result.omittedAssumptions + result.omittedLosses > 0) {
        console.out << name << ": "
                    << counted(result.omittedAssumptions + result.omittedLosses, "further note")
                    << " not listed\n";
    }
    for (const platen::Finding& finding : result.check.findings) {
        console.out << name << ": left: " << platen::describe(finding) << '\n';
    }
    const char* kind = result.kind ? platen::kindName(*result.kind) : "file";
    if (result.outcome == platen::RepairResult::Outcome::Unchanged) {
        console.out << name << ": nothing to repair, " << kind << '\n';
    } else {
        console.out << name << ": repaired, " << kind << ", "
                    << counted(result.assumptions.size() + result.omittedAssumptions, "assumption")
                    << ", " << counted(result.losses.size() + result.omittedLosses, "loss") << '\n';
    }
}

ExitCode exitCodeOf(const platen::RepairResult& result) {
    switch (result.outcome) {
        case platen::RepairResult::Outcome::Unchanged:
            return ExitCode::Ok;
        case platen::RepairResult::Outcome::Repaired:
            return ExitCode::Warnings;
        case platen::RepairResult::Outcome::Unusable:
            break;
    }
    return ExitCode::Error;
}

}  // namespace cli::words
