#include <algorithm>
#include <cstddef>
#include <string_view>

#include <platen/utcore.h>

namespace ut {

namespace {

/// The digits that `text` begins with.
std::wstring_view digitRun(std::wstring_view text) {
    return text.substr(0, std::min(text.find_first_not_of(L"0123456789"), text.size()));
}

std::wstring_view withoutLeadingZeros(std::wstring_view digits) {
    return digits.substr(std::min(digits.find_first_not_of(L'0'), digits.size()));
}

int compareSizes(std::size_t left, std::size_t right) {
    return static_cast<int>(left > right) - static_cast<int>(left < right);
}

/// By value: of two numbers without leading zeros the longer one is the larger.
int compareNumbers(std::wstring_view left, std::wstring_view right) {
    left = withoutLeadingZeros(left);
    right = withoutLeadingZeros(right);
    const int bySize = compareSizes(left.size(), right.size());
    return bySize != 0 ? bySize : left.compare(right);
}

}  // namespace

int strCmpAlphanum(const wchar_t* left, const wchar_t* right, bool noCase) {
    std::wstring_view leftRest = left;
    std::wstring_view rightRest = right;
    int byZeros = 0;
    while (!leftRest.empty() && !rightRest.empty()) {
        const std::wstring_view leftRun = digitRun(leftRest);
        const std::wstring_view rightRun = digitRun(rightRest);
        if (!leftRun.empty() && !rightRun.empty()) {
            if (const int order = compareNumbers(leftRun, rightRun); order != 0) {
                return order;
            }
            if (byZeros == 0) {
                byZeros = compareSizes(leftRun.size(), rightRun.size());
            }
            leftRest.remove_prefix(leftRun.size());
            rightRest.remove_prefix(rightRun.size());
            continue;
        }
        const wchar_t leftCharacter = noCase ? toLower(leftRest.front()) : leftRest.front();
        const wchar_t rightCharacter = noCase ? toLower(rightRest.front()) : rightRest.front();
        if (const int order = compareOrdinal({&leftCharacter, 1}, {&rightCharacter, 1});
            order != 0) {
            return order;
        }
        leftRest.remove_prefix(1);
        rightRest.remove_prefix(1);
    }
    const int byEnd = compareSizes(leftRest.size(), rightRest.size());
    return byEnd != 0 ? byEnd : byZeros;
}

}  // namespace ut
