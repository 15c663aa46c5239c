/// Values of items by what they mean, and copies of items.
#pragma once

#include <memory>
#include <string_view>

#include <platen/pia.h>

namespace platen {

/// True when the texts are numbers of one value, however they are spelled, or the same text.
bool equalNumbers(std::wstring_view left, std::wstring_view right);

/// True when two items of one type, which are no blocks, have one value: numbers and hexadecimal
/// digits by value, everything else exactly.
bool equalValues(const PiaItem& left, const PiaItem& right);

/// A copy of an item that is no block.
std::unique_ptr<PiaItem> copyOfValue(const PiaItem& item);
/// A copy of an item with all that is in it, under another name.
std::unique_ptr<PiaItem> copyOf(const PiaItem& item, std::wstring_view name);

/// Hands an item over to a block; false when it has one of that name and type.
bool adopt(PiaBlock& block, std::unique_ptr<PiaItem> item);

}  // namespace platen
