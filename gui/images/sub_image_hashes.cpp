// A sum over a rectangle of pixels, each times a power of one number for its row and of another for
// its column, modulo a prime: a polynomial in two unknowns. The sums of two rectangles that differ
// are the same for hardly any choice of the two numbers, which are therefore drawn at random, so
// that no picture can be made to have many equal sums. Moving a rectangle by a place takes a few
// multiplications whatever its size.
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <random>
#include <vector>

#include "gui/images/pixel_rows.h"
#include "gui/images/sub_image.h"

namespace sub_image {
namespace {

/// 2^31 - 1. Numbers modulo it are folded, which leaves them below 2^31 + 8, not always the least.
constexpr std::uint64_t prime = 0x7fffffff;
using Number = std::uint32_t;
using Numbers = std::vector<Number>;

Number folded(std::uint64_t value) {
    value = (value & prime) + (value >> 31);
    return static_cast<Number>((value & prime) + (value >> 31));
}

Number least(std::uint64_t value) {
    const Number number = folded(value);
    return number >= prime ? static_cast<Number>(number - prime) : number;
}

Number product(Number left, Number right) { return folded(std::uint64_t{left} * right); }

/// The number whose powers belong to the rows, and the one for the columns; drawn once for the
/// process.
struct Bases {
    Bases() {
        std::random_device source;
        std::uniform_int_distribution<Number> any(2, prime - 1);
        row = any(source);
        column = any(source);
    }

    Number row = 0;
    Number column = 0;
};

const Bases& bases() {
    static const Bases drawn;
    return drawn;
}

Number power(Number base, std::size_t exponent) {
    Number result = 1;
    for (; exponent > 0; exponent /= 2) {
        if (exponent % 2 == 1) {
            result = product(result, base);
        }
        base = product(base, base);
    }
    return result;
}

/// For each column of a picture the sum of so many rows of pixels, the last one not multiplied.
class ColumnSums {
public:
    ColumnSums(const Picture& picture, std::size_t rows)
        : picture_(picture),
          rows_(rows),
          minusPower_(static_cast<Number>(prime - least(power(bases().row, rows)))),
          sums_(picture.width),
          entering_(picture.width),
          leaving_(picture.width) {}

    /// Starts with the rows from `first` on.
    void start(std::size_t first) {
        for (std::size_t row = first; row < first + rows_; ++row) {
            read(row, entering_);
            for (std::size_t x = 0; x < sums_.size(); ++x) {
                sums_[x] = folded(std::uint64_t{sums_[x]} * bases().row + entering_[x]);
            }
        }
    }

    /// Leaves out row `first` and takes the one that follows the last.
    void move(std::size_t first) {
        read(first, leaving_);
        read(first + rows_, entering_);
        const std::uint64_t base = bases().row;
        const std::uint64_t minusPower = minusPower_;
        for (std::size_t x = 0; x < sums_.size(); ++x) {
            sums_[x] = folded(sums_[x] * base + leaving_[x] * minusPower + entering_[x]);
        }
    }

    const Numbers& sums() const { return sums_; }

private:
    void read(std::size_t row, Numbers& pixels) const {
        pixel_rows::converter(wut::ImageUtils::PF_RGB, wut::ImageUtils::PF_RGBA)(
            picture_.at(0, row), reinterpret_cast<unsigned char*>(pixels.data()), picture_.width,
            0);
    }

    const Picture& picture_;
    std::size_t rows_;
    Number minusPower_;
    Numbers sums_;
    Numbers entering_;
    Numbers leaving_;
};

bool equalAt(const Picture& image, const Picture& sub, Place place) {
    for (std::size_t row = 0; row < sub.height; ++row) {
        if (std::memcmp(image.at(place.x, place.y + row), sub.at(0, row), sub.width * 3) != 0) {
            return false;
        }
    }
    return true;
}

}  // namespace

std::optional<Place> findByHashes(const Picture& image, const Picture& sub, std::size_t firstRow) {
    const std::size_t columns = image.width - sub.width + 1;
    const std::size_t rows = image.height - sub.height + 1;

    Numbers powers(image.width);
    Number next = 1;
    for (Number& one : powers) {
        one = next;
        next = product(next, bases().column);
    }
    ColumnSums subSums(sub, sub.height);
    subSums.start(0);
    std::uint64_t wanted = 0;
    for (std::size_t x = 0; x < sub.width; ++x) {
        wanted += product(subSums.sums()[x], powers[x]);
    }
    // The powers of a place's columns begin where it stands, so the sum that is wanted does, too.
    Numbers wantedAt(columns);
    for (std::size_t x = 0; x < columns; ++x) {
        wantedAt[x] = least(std::uint64_t{folded(wanted)} * powers[x]);
    }

    ColumnSums columnSums(image, sub.height);
    columnSums.start(firstRow);
    Numbers terms(image.width);
    for (std::size_t y = firstRow;; columnSums.move(y++)) {
        const Numbers& sums = columnSums.sums();
        for (std::size_t x = 0; x < image.width; ++x) {
            terms[x] = product(sums[x], powers[x]);
        }
        std::uint64_t sum = 0;
        for (std::size_t x = 0; x < sub.width; ++x) {
            sum += terms[x];
        }
        for (std::size_t x = 0;; ++x) {
            if (least(sum) == wantedAt[x] && equalAt(image, sub, {x, y})) {
                return Place{x, y};
            }
            if (x + 1 == columns) {
                break;
            }
            sum += terms[x + sub.width];
            sum -= terms[x];
        }
        if (y + 1 == rows) {
            return std::nullopt;
        }
    }
}

}  // namespace sub_image
