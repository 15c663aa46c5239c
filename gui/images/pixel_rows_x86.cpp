// Byte shuffles of SSSE3, which the compiler may not use by itself: the library runs on every
// x86-64. Four pixels of four bytes fill a register, sixteen pixels of three bytes fill three.
#include <tmmintrin.h>

#include <algorithm>
#include <array>

#include "gui/images/pixel_rows.h"

#define WITH_SSSE3 __attribute__((target("ssse3")))

namespace pixel_rows {
namespace {

constexpr std::size_t pixelsAtOnce = 16;

WITH_SSSE3 inline __m128i load(const unsigned char* source, int number) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(source) + number);
}

WITH_SSSE3 inline void store(unsigned char* target, int number, __m128i bytes) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(target) + number, bytes);
}

/// Where the bytes of four pixels come from; a negative number makes a byte 0.
template <std::size_t FromBytes, std::size_t ToBytes, bool Swap>
WITH_SSSE3 inline __m128i order() {
    constexpr std::size_t common = std::min(FromBytes, ToBytes);
    std::array<signed char, 16> from{};
    from.fill(-1);
    for (std::size_t pixel = 0; pixel < 4; ++pixel) {
        for (std::size_t byte = 0; byte < common; ++byte) {
            const std::size_t origin = Swap && byte != 3 ? 2 - byte : byte;
            from[pixel * ToBytes + byte] = static_cast<signed char>(pixel * FromBytes + origin);
        }
    }
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from.data()));
}

template <bool Swap>
WITH_SSSE3 void addAlpha(const unsigned char* source, unsigned char* target, std::size_t width,
                         unsigned char alpha) {
    const __m128i four = order<3, 4, Swap>();
    const __m128i alphas = _mm_slli_epi32(_mm_set1_epi32(alpha), 24);
    for (; width >= pixelsAtOnce; width -= pixelsAtOnce) {
        const __m128i a = load(source, 0);
        const __m128i b = load(source, 1);
        const __m128i c = load(source, 2);
        store(target, 0, _mm_or_si128(_mm_shuffle_epi8(a, four), alphas));
        store(target, 1, _mm_or_si128(_mm_shuffle_epi8(_mm_alignr_epi8(b, a, 12), four), alphas));
        store(target, 2, _mm_or_si128(_mm_shuffle_epi8(_mm_alignr_epi8(c, b, 8), four), alphas));
        store(target, 3, _mm_or_si128(_mm_shuffle_epi8(_mm_srli_si128(c, 4), four), alphas));
        source += pixelsAtOnce * 3;
        target += pixelsAtOnce * 4;
    }
    convertPlain<3, 4, Swap>(source, target, width, alpha);
}

template <bool Swap>
WITH_SSSE3 void dropAlpha(const unsigned char* source, unsigned char* target, std::size_t width,
                          unsigned char alpha) {
    const __m128i four = order<4, 3, Swap>();
    for (; width >= pixelsAtOnce; width -= pixelsAtOnce) {
        const __m128i a = _mm_shuffle_epi8(load(source, 0), four);
        const __m128i b = _mm_shuffle_epi8(load(source, 1), four);
        const __m128i c = _mm_shuffle_epi8(load(source, 2), four);
        const __m128i d = _mm_shuffle_epi8(load(source, 3), four);
        store(target, 0, _mm_or_si128(a, _mm_slli_si128(b, 12)));
        store(target, 1, _mm_or_si128(_mm_srli_si128(b, 4), _mm_slli_si128(c, 8)));
        store(target, 2, _mm_or_si128(_mm_srli_si128(c, 8), _mm_slli_si128(d, 4)));
        source += pixelsAtOnce * 4;
        target += pixelsAtOnce * 3;
    }
    convertPlain<4, 3, Swap>(source, target, width, alpha);
}

WITH_SSSE3 void swapThree(const unsigned char* source, unsigned char* target, std::size_t width,
                          unsigned char alpha) {
    const __m128i five = _mm_setr_epi8(2, 1, 0, 5, 4, 3, 8, 7, 6, 11, 10, 9, 14, 13, 12, 15);
    // A sixteenth byte comes along each time; what follows writes it anew.
    for (; width >= pixelsAtOnce; width -= 15) {
        for (int group = 0; group < 3; ++group) {
            store(target + group * 15, 0, _mm_shuffle_epi8(load(source + group * 15, 0), five));
        }
        source += 45;
        target += 45;
    }
    convertPlain<3, 3, true>(source, target, width, alpha);
}

WITH_SSSE3 void swapFour(const unsigned char* source, unsigned char* target, std::size_t width,
                         unsigned char alpha) {
    const __m128i four = order<4, 4, true>();
    for (; width >= pixelsAtOnce; width -= pixelsAtOnce) {
        for (int group = 0; group < 4; ++group) {
            store(target, group, _mm_shuffle_epi8(load(source, group), four));
        }
        source += pixelsAtOnce * 4;
        target += pixelsAtOnce * 4;
    }
    convertPlain<4, 4, true>(source, target, width, alpha);
}

}  // namespace

bool useProcessor(Kernel& kernel) {
    if (!__builtin_cpu_supports("ssse3")) {
        return false;
    }
    kernel.name = "ssse3";
    kernel.at(3, 3, true) = swapThree;
    kernel.at(3, 4, false) = addAlpha<false>;
    kernel.at(3, 4, true) = addAlpha<true>;
    kernel.at(4, 3, false) = dropAlpha<false>;
    kernel.at(4, 3, true) = dropAlpha<true>;
    kernel.at(4, 4, true) = swapFour;
    return true;
}

}  // namespace pixel_rows
