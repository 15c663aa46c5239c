#include <platen/compare.h>

#include <algorithm>
#include <limits>

#include <platen/utcore.h>
#include "inspect/compare_blocks.h"
#include "inspect/meaning.h"

namespace platen {
namespace {

const char* encodingWord(PiaEncoding encoding) {
    return encoding == PiaEncoding::Utf8 ? "UTF-8" : "ANSI";
}

std::vector<ContainerDifference> containerDifferences(const PiaContainer& before,
                                                      const PiaContainer& after) {
    using What = ContainerDifference::What;
    std::vector<ContainerDifference> differences;
    if (before.version == 0 || after.version == 0) {
        // Bare body text has no container.
        return differences;
    }
    const auto note = [&](What what, std::string one, std::string other) {
        if (one != other) {
            differences.push_back({what, std::move(one), std::move(other)});
        }
    };
    note(What::Version, std::to_string(before.version), std::to_string(after.version));
    if (before.kind && after.kind) {
        note(What::Header, headerLetters(*before.kind), headerLetters(*after.kind));
    }
    note(What::Encoding, encodingWord(before.encoding), encodingWord(after.encoding));
    return differences;
}

}  // namespace

Comparison compare(const PiaBlock& before, const PiaBlock& after) {
    const Meaning beforeMeaning(before);
    const Meaning afterMeaning(after);
    const StyleMatch match = styleMatchOf(beforeMeaning, afterMeaning);
    Comparison comparison;
    comparison.throughColors = match == StyleMatch::ThroughColors;
    comparison.differences = differencesOf(beforeMeaning, before, afterMeaning, after, {}, match,
                                           std::numeric_limits<std::size_t>::max());
    return comparison;
}

Comparison compare(const PiaInput& before, const PiaInput& after) {
    const PiaBlock none{L""};
    const auto rootOf = [&](const PiaInput& input) -> const PiaBlock& {
        return input.root() == nullptr ? none : *input.root();
    };
    Comparison comparison = compare(rootOf(before), rootOf(after));
    comparison.container = containerDifferences(before.container(), after.container());
    return comparison;
}

void keepOnly(Comparison& comparison, const std::vector<std::wstring>& keys) {
    if (keys.empty()) {
        return;
    }
    std::erase_if(comparison.differences, [&](const Difference& difference) {
        return std::none_of(
            difference.place.begin(), difference.place.end(), [&](const DifferenceStep& step) {
                return step.kind == DifferenceStep::Kind::Member &&
                       std::any_of(keys.begin(), keys.end(), [&](const std::wstring& key) {
                           return ut::equalNoCase(key, step.name);
                       });
            });
    });
}

}  // namespace platen
