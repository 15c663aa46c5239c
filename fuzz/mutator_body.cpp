// Inputs that are body text, or two texts with a line "----" between them, of which the first is.

#include "fuzz/mutation.h"
#include "fuzz/sound_file.h"

namespace {

std::string_view viewOf(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

std::size_t change(std::string_view input, std::string_view other, std::uint8_t* data,
                   std::size_t mostBytes, unsigned seed) {
    Mutation mutation(seed);
    const InputParts parts = partsOf(input);
    if (parts.first.size() == input.size()) {
        return putInput(mutation.body(input, other, mostBytes), data, mostBytes);
    }
    std::string first(parts.first);
    std::string second(parts.second);
    switch (mutation.below(6)) {
        case 0:
            second = mutation.body(first, other, mostBytes / 2);
            break;
        case 1:
            std::swap(first, second);
            break;
        case 2:
            first = mutation.body(first, other, mostBytes / 2);
            break;
        case 3:
            second = mutation.bytes(second, mostBytes / 2);
            break;
        default:
            second = mutation.body(second, first, mostBytes / 2);
    }
    if (!first.ends_with('\n')) {
        first += '\n';
    }
    return putInput(first.append(partsDivider.substr(1)).append(second), data, mostBytes);
}

}  // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t mostBytes, unsigned seed) {
    const std::string input(viewOf(data, size));
    return change(input, input, data, mostBytes, seed);
}

extern "C" std::size_t LLVMFuzzerCustomCrossOver(const std::uint8_t* one, std::size_t oneSize,
                                                 const std::uint8_t* other, std::size_t otherSize,
                                                 std::uint8_t* data, std::size_t mostBytes,
                                                 unsigned seed) {
    return change(viewOf(one, oneSize), viewOf(other, otherSize), data, mostBytes, seed);
}
