// The checksum of the container is the sum of all bytes and the sum of all running sums, modulo a
// prime. A single byte that is wrong changes the first by its error and the second by its error
// times its distance from the end: together they say what is wrong and where.
#include <cstdint>
#include <string>

#include <platen/utcore.h>
#include "edit/repair_container.h"
#include "pia/container.h"

namespace platen {
namespace {

constexpr std::uint32_t prime = 65521;
/// Places that the checksum leaves open; a stream has few of them, one for each 64 KiB.
constexpr std::size_t mostTries = 32;

std::uint32_t byteAt(std::string_view bytes, std::size_t index) {
    return static_cast<unsigned char>(bytes[index]);
}

std::uint32_t minus(std::uint32_t left, std::uint32_t right) {
    return (left + prime - right) % prime;
}

std::uint32_t times(std::uint32_t left, std::uint32_t right) {
    return static_cast<std::uint32_t>(std::uint64_t{left} * right % prime);
}

/// The number that gives 1 with `number`, by Fermat's little theorem.
std::uint32_t inverse(std::uint32_t number) {
    std::uint32_t result = 1;
    for (std::uint32_t exponent = prime - 2; exponent != 0; exponent /= 2) {
        result = exponent % 2 == 1 ? times(result, number) : result;
        number = times(number, number);
    }
    return result;
}

std::wstring hex(std::uint32_t byte) {
    constexpr std::wstring_view digits = L"0123456789ABCDEF";
    return {digits[byte / 16], digits[byte % 16]};
}

/// What the checksum covers: the lengths and the compressed data.
class Covered {
public:
    Covered(std::string_view file, const PiaLimits& limits)
        : file_(file),
          limits_(limits),
          header_(pia_header::decode(file)),
          bytes_(file.substr(pia_header::lengthsOffset)) {
        const std::uint32_t actual = pia_header::checksum(bytes_, {});
        excess_ = minus((actual & 0xFFFFU) % prime, (header_.checksum & 0xFFFFU) % prime);
        secondExcess_ = minus((actual >> 16U) % prime, (header_.checksum >> 16U) % prime);
    }

    std::optional<std::string> correct(Assumption& assumption) {
        const std::uint64_t stored = header_.compressedBytes;
        const std::uint64_t there = file_.size() - pia_header::size;
        if (stored == there) {
            return withReplaced(assumption);
        }
        if (stored == there + 1) {
            return withInserted(assumption);
        }
        return stored + 1 == there ? withRemoved(assumption) : std::nullopt;
    }

private:
    std::optional<std::string> withReplaced(Assumption& assumption) {
        const bool isMore = excess_ <= 0xFF;
        const std::uint32_t error = isMore ? excess_ : prime - excess_;
        if (error == 0 || error > 0xFF) {
            return std::nullopt;
        }
        const std::uint32_t toEnd = times(secondExcess_, inverse(excess_));
        for (std::size_t distance = toEnd; distance <= bytes_.size(); distance += prime) {
            if (distance == 0) {
                continue;
            }
            const std::size_t index = bytes_.size() - distance;
            const std::uint32_t found = byteAt(bytes_, index);
            const std::uint32_t taken = isMore ? found - error : found + error;
            if (taken <= 0xFF) {
                std::string corrected(file_);
                corrected[pia_header::lengthsOffset + index] = static_cast<char>(taken);
                if (holds(corrected)) {
                    note(assumption, index, hex(found), hex(taken));
                    return corrected;
                }
            }
        }
        return std::nullopt;
    }

    std::optional<std::string> withInserted(Assumption& assumption) {
        const std::uint32_t taken = minus(0, excess_);
        if (taken > 0xFF) {
            return std::nullopt;
        }
        // Bytes before the new one are farther from the end then.
        std::uint32_t before = 0;
        for (std::size_t index = 0; index <= bytes_.size(); ++index) {
            const std::uint32_t distance =
                static_cast<std::uint32_t>((bytes_.size() + 1 - index) % prime);
            const std::uint32_t gain = (before + times(distance, taken)) % prime;
            const bool isOther = index == 0 || byteAt(bytes_, index - 1) != taken;
            if (isOther && (secondExcess_ + gain) % prime == 0) {
                std::string corrected(file_);
                corrected.insert(pia_header::lengthsOffset + index, 1, static_cast<char>(taken));
                if (holds(corrected)) {
                    note(assumption, index, {}, hex(taken));
                    return corrected;
                }
            }
            before = index < bytes_.size() ? (before + byteAt(bytes_, index)) % prime : before;
        }
        return std::nullopt;
    }

    std::optional<std::string> withRemoved(Assumption& assumption) {
        if (excess_ > 0xFF) {
            return std::nullopt;
        }
        std::uint32_t before = 0;
        for (std::size_t index = 0; index < bytes_.size(); ++index) {
            const std::uint32_t found = byteAt(bytes_, index);
            const std::uint32_t distance =
                static_cast<std::uint32_t>((bytes_.size() - index) % prime);
            const bool isOther = index == 0 || byteAt(bytes_, index - 1) != found;
            if (found == excess_ && isOther &&
                secondExcess_ == (before + times(distance, found)) % prime) {
                std::string corrected(file_);
                corrected.erase(pia_header::lengthsOffset + index, 1);
                if (holds(corrected)) {
                    note(assumption, index, hex(found), {});
                    return corrected;
                }
            }
            before = (before + found) % prime;
        }
        return std::nullopt;
    }

    bool holds(const std::string& file) {
        if (++tries_ > mostTries) {
            return false;
        }
        PiaFileIn reader;
        PiaReadOptions options{.limits = limits_};
        options.verifyLengths = true;
        options.verifyChecksum = true;
        return reader.openBytes(file, options) == 0;
    }

    static void note(Assumption& assumption, std::size_t index, std::wstring found,
                     std::wstring taken) {
        assumption = {.code = RepairCode::ByteCorrected,
                      .offset = pia_header::lengthsOffset + index,
                      .found = std::move(found),
                      .taken = std::move(taken)};
    }

    std::string_view file_;
    const PiaLimits& limits_;
    pia_header::Fields header_;
    std::string_view bytes_;
    /// How much the sums of the file are above those that the header has.
    std::uint32_t excess_;
    std::uint32_t secondExcess_;
    std::size_t tries_ = 0;
};

}  // namespace

std::optional<std::string> withByteCorrected(std::string_view file, const PiaLimits& limits,
                                             Assumption& assumption) {
    return file.size() > pia_header::size ? Covered(file, limits).correct(assumption)
                                          : std::nullopt;
}

}  // namespace platen
