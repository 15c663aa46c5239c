#include "inspect/item_values.h"

#include <algorithm>
#include <string>
#include <vector>

#include <platen/utcore.h>
#include "pia/access.h"

namespace platen {
namespace {

template <class Character>
bool isDigit(Character character) {
    return character >= '0' && character <= '9';
}

template <class Character>
bool isHexadecimal(Character character) {
    return isDigit(character) || (character >= 'A' && character <= 'F') ||
           (character >= 'a' && character <= 'f');
}

/// The digits of a decimal number without those that say nothing.
template <class Character>
struct Digits {
    using View = std::basic_string_view<Character>;
    View whole;
    View fraction;
    bool isNegative = false;

    bool isZero() const { return whole.empty() && fraction.empty(); }
    bool operator==(const Digits& other) const {
        return whole == other.whole && fraction == other.fraction &&
               (isNegative == other.isNegative || isZero());
    }
};

/// Takes "-12.50" apart; false for what is spelled in another way, such as with an exponent.
template <class Character>
bool takeApart(std::basic_string_view<Character> text, Digits<Character>& digits) {
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
        digits.isNegative = text.front() == '-';
        text.remove_prefix(1);
    }
    const auto point = std::find(text.begin(), text.end(), static_cast<Character>('.'));
    const auto before = static_cast<std::size_t>(point - text.begin());
    digits.whole = text.substr(0, before);
    digits.fraction = before == text.size() ? text.substr(before) : text.substr(before + 1);
    if ((digits.whole.empty() && digits.fraction.empty()) ||
        !std::all_of(digits.whole.begin(), digits.whole.end(), isDigit<Character>) ||
        !std::all_of(digits.fraction.begin(), digits.fraction.end(), isDigit<Character>)) {
        return false;
    }
    while (!digits.whole.empty() && digits.whole.front() == '0') {
        digits.whole.remove_prefix(1);
    }
    while (!digits.fraction.empty() && digits.fraction.back() == '0') {
        digits.fraction.remove_suffix(1);
    }
    return true;
}

/// Digits, signs, a point and an exponent: what follows a number, or stands for one in words, is no
/// part of its value.
template <class Character>
bool isScientific(std::basic_string_view<Character> text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), [](Character character) {
        return isDigit(character) || character == '.' || character == '-' || character == '+' ||
               character == 'e' || character == 'E';
    });
}

template <class Left, class Right>
bool equalNumberTexts(Left left, Right right) {
    if (std::equal(left.begin(), left.end(), right.begin(), right.end(), [](auto one, auto other) {
            return static_cast<wchar_t>(one) == static_cast<wchar_t>(other);
        })) {
        return true;
    }
    if constexpr (std::is_same_v<Left, Right>) {
        using Character = typename Left::value_type;
        Digits<Character> leftDigits;
        Digits<Character> rightDigits;
        if (takeApart(left, leftDigits) && takeApart(right, rightDigits)) {
            return leftDigits == rightDigits;
        }
        double one = 0;
        double other = 0;
        return isScientific(left) && isScientific(right) && ut::scanDouble(left, one) &&
               ut::scanDouble(right, other) && one == other;
    } else {
        return equalNumberTexts(std::wstring_view(std::wstring(left.begin(), left.end())),
                                std::wstring_view(std::wstring(right.begin(), right.end())));
    }
}

bool equalDigits(std::wstring_view left, std::wstring_view right) {
    return std::all_of(left.begin(), left.end(), isHexadecimal<wchar_t>) &&
           ut::equalNoCase(left, right);
}

template <class Equal>
bool compareTexts(const PiaTextItem& left, const PiaTextItem& right, Equal equal) {
    return PiaAccess::read(left.value, [&](auto one) {
        return PiaAccess::read(right.value, [&](auto other) { return equal(one, other); });
    });
}

std::unique_ptr<PiaBlock> copyOfBlock(const PiaBlock& block, std::wstring_view name) {
    auto copy = std::make_unique<PiaBlock>(name);
    std::vector<PiaBlock*> open{copy.get()};
    for (PiaWalk walk(block); walk.next();) {
        if (walk.isEnd()) {
            open.pop_back();
        } else if (walk.item().type == PiaItemType::Block) {
            auto child = std::make_unique<PiaBlock>(walk.item().name);
            PiaBlock* const inner = child.get();
            PiaAccess::append(*open.back(), child.release());
            open.push_back(inner);
        } else {
            PiaAccess::append(*open.back(), copyOfValue(walk.item()).release());
        }
    }
    return copy;
}

}  // namespace

bool equalNumbers(std::wstring_view left, std::wstring_view right) {
    return equalNumberTexts(left, right);
}

bool equalValues(const PiaItem& left, const PiaItem& right) {
    if (left.type == PiaItemType::Bool) {
        return static_cast<const PiaBool&>(left).value == static_cast<const PiaBool&>(right).value;
    }
    const auto& one = static_cast<const PiaTextItem&>(left);
    const auto& other = static_cast<const PiaTextItem&>(right);
    if (left.type == PiaItemType::Num) {
        return compareTexts(one, other, [](auto l, auto r) { return equalNumberTexts(l, r); });
    }
    const auto same = [](auto l, auto r) {
        return std::equal(l.begin(), l.end(), r.begin(), r.end(), [](auto a, auto b) {
            return static_cast<wchar_t>(a) == static_cast<wchar_t>(b);
        });
    };
    return compareTexts(one, other, same) ||
           (left.type == PiaItemType::Bin && equalDigits(one.value, other.value));
}

std::unique_ptr<PiaItem> copyOfValue(const PiaItem& item) { return copyOf(item, item.name); }

std::unique_ptr<PiaItem> copyOf(const PiaItem& item, std::wstring_view name) {
    const auto text = [&] { return static_cast<const PiaTextItem&>(item).value.str(); };
    switch (item.type) {
        case PiaItemType::Bool:
            return std::make_unique<PiaBool>(name, static_cast<const PiaBool&>(item).value);
        case PiaItemType::Str:
            return std::make_unique<PiaStr>(name, text());
        case PiaItemType::Num:
            return std::make_unique<PiaNum>(name, std::wstring_view(text()));
        case PiaItemType::Bin:
            return std::make_unique<PiaBin>(name, text());
        case PiaItemType::Block:
            break;
    }
    return copyOfBlock(static_cast<const PiaBlock&>(item), name);
}

bool adopt(PiaBlock& block, std::unique_ptr<PiaItem> item) {
    const bool added = block.addItem(item.get());
    if (added) {
        static_cast<void>(item.release());
    }
    return added;
}

}  // namespace platen
