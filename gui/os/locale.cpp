#include <clocale>
#include <cstdint>
#include <limits>

#include <platen/gui_os.h>

namespace wut {

void setApplicationLocale() {
    std::setlocale(LC_ALL, "C");
    for (const int category : {LC_COLLATE, LC_CTYPE, LC_MONETARY, LC_TIME}) {
        std::setlocale(category, "");
    }
}

int mulDiv(int number, int numerator, int denominator) {
    if (denominator == 0) {
        return -1;
    }
    const std::int64_t product = std::int64_t{number} * numerator;
    const std::int64_t divisor = denominator;
    const std::int64_t half = (divisor < 0 ? -divisor : divisor) / 2;
    const std::int64_t quotient = (product < 0 ? product - half : product + half) / divisor;
    constexpr std::int64_t largest = std::numeric_limits<std::int32_t>::max();
    return quotient > largest || quotient < -largest ? -1 : static_cast<int>(quotient);
}

}  // namespace wut
