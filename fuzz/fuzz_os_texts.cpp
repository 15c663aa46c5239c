// Files of positions, texts with environment variables, and multiplication, as dialogs use them.

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include <platen/gui_os.h>
#include <platen/utcore.h>
#include "fuzz/oracle.h"
#include "fuzz/text_in_memory.h"
#include "gui/os/text_file.h"

namespace {

std::string_view input;

void positions() {
    double values[6] = {-1, -1, -1, -1, -1, -1};
    const bool read = wut::readPositionFile(OdString(L"in memory"), values[0], values[1], values[2],
                                            values[3], values[4], values[5]);
    for (const double value : values) {
        require(std::isfinite(value));
    }
    if (read) {
        // What was read is read again when it is written plainly, in the order of the file.
        std::string text;
        for (const int index : {2, 5, 4, 3, 0, 1}) {
            char line[64];
            std::snprintf(line, sizeof line, "%.17g\n", values[index]);
            text += line;
        }
        input = text;
        double again[6] = {};
        require(wut::readPositionFile(OdString(L"in memory"), again[0], again[1], again[2],
                                      again[3], again[4], again[5]));
        require(std::ranges::equal(values, again));
    }
}

/// Lines in pieces of any size are the lines of the file.
void lines() {
    const std::string whole(input);
    for (const int size : {2, 7, 512}) {
        std::FILE* const file = openTextInMemory(whole);
        std::vector<char> text(static_cast<std::size_t>(size));
        std::size_t taken = 0;
        while (ut::nfgets(text.data(), size, file) != nullptr) {
            const std::size_t length = std::strlen(text.data());
            require(length < static_cast<std::size_t>(size));
            require(std::strpbrk(text.data(), "\r\n") == nullptr);
            taken += length;
        }
        std::fclose(file);
        std::size_t expected = 0;
        for (const char byte : whole) {
            expected += byte == '\r' || byte == '\n' ? 0 : 1;
        }
        require(taken == expected);
    }
}

void variables() {
    const std::wstring source = ut::decodePath(input);
    const unsigned long needed = wut::expandEnvironmentStrings(source.c_str(), nullptr, 0);
    require(needed > 0);
    std::vector<wchar_t> target(needed + 1, L'#');
    require(wut::expandEnvironmentStrings(source.c_str(), target.data(), needed) == needed);
    require(target[needed - 1] == L'\0' && target[needed] == L'#');
    if (needed > 1) {
        std::vector<wchar_t> small(needed - 1, L'#');
        require(wut::expandEnvironmentStrings(source.c_str(), small.data(), needed - 1) == needed);
    }
}

void multiplication() {
    std::int32_t numbers[3];
    if (input.size() < sizeof numbers) {
        return;
    }
    std::memcpy(numbers, input.data(), sizeof numbers);
    const auto [number, numerator, denominator] = numbers;
    const int result = wut::mulDiv(number, numerator, denominator);
    if (denominator == 0) {
        require(result == -1);
        return;
    }
    const auto product = static_cast<long double>(number) * numerator;
    const long double exact = product / denominator;
    const long double rounded = exact < 0 ? -std::floor(0.5L - exact) : std::floor(exact + 0.5L);
    const bool fits = rounded >= -2147483647.0L && rounded <= 2147483647.0L;
    require(fits ? static_cast<long double>(result) == rounded
                 : result == -1 || result == INT32_MIN);
}

}  // namespace

namespace wut {

/// In place of the file of that name.
std::FILE* openTextFile(const std::wstring&) { return openTextInMemory(input); }

}  // namespace wut

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    for (void (*const part)() : {positions, lines, variables, multiplication}) {
        input = bytes;
        part();
    }
    return 0;
}
