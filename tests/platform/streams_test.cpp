#include <gtest/gtest.h>
#include <zlib.h>

#include <limits>

#include <platen/utcore.h>
#include "platform/utcore/adler32.h"

namespace {

using Stop = ut::ZlibEngine::Stop;

/// Text that packs a little, so that streams have several blocks.
std::string sampleText(std::size_t size) {
    std::string text;
    std::uint32_t state = 1;
    while (text.size() < size) {
        state = state * 1664525 + 1013904223;
        text += "key_" + std::to_string(state >> 20) + "=";
    }
    text.resize(size);
    return text;
}

std::string compressed(const std::string& text, int level = 6) {
    ut::ByteBuffer packed;
    EXPECT_EQ(ut::ZlibEngine::compress(text, packed, level), 0);
    return std::string(packed.view());
}

TEST(Zlib, SizesAndHintsOfEveryKind) {
    constexpr std::uint64_t most = std::numeric_limits<std::uint64_t>::max();
    for (const std::size_t size : {0u, 1u, 4095u, 4096u, 4097u, 300000u}) {
        const std::string text = sampleText(size);
        const std::string stream = compressed(text) + "behind";
        for (const std::uint64_t hint : {std::uint64_t{0}, std::uint64_t{size}, most}) {
            for (const std::uint64_t limit : {std::uint64_t{size}, std::uint64_t{1} << 28, most}) {
                ut::ByteBuffer target;
                std::size_t consumed = 0;
                Stop stop = Stop::Corrupt;
                ASSERT_EQ(ut::ZlibEngine::decompress(stream, target, hint, limit, consumed, stop),
                          0);
                EXPECT_EQ(stop, Stop::None);
                EXPECT_EQ(consumed, stream.size() - 6);
                EXPECT_TRUE(target.view() == text);
                // What a stream claims must not cost memory that it cannot fill.
                EXPECT_LT(target.capacity(), stream.size() * 1032 + 70000);
            }
        }
    }
}

TEST(Zlib, AppendsWhatItCompresses) {
    ut::ByteBuffer target;
    target.reserve(4);
    std::copy_n("head", 4, target.data());
    target.setSize(4);
    ASSERT_EQ(ut::ZlibEngine::compress("body", target, 9), 0);
    EXPECT_TRUE(target.view().starts_with("head\x78"));
    EXPECT_EQ(ut::ZlibEngine::compress("body", target, 10), Z_STREAM_ERROR);
}

// The streams and checksums of the library itself are the measure.
TEST(Zlib, SameBytesAsTheLibrary) {
    for (const std::size_t size : {0u, 1u, 31u, 32u, 703u, 704u, 705u, 5552u, 100003u}) {
        std::string text = sampleText(size);
        for (int level = Z_DEFAULT_COMPRESSION; level <= 9; ++level) {
            uLong length = compressBound(static_cast<uLong>(size));
            std::string expected(length, '\0');
            ASSERT_EQ(compress2(reinterpret_cast<Bytef*>(expected.data()), &length,
                                reinterpret_cast<const Bytef*>(text.data()),
                                static_cast<uLong>(size), level),
                      Z_OK);
            expected.resize(length);
            EXPECT_TRUE(compressed(text, level) == expected) << size << " at level " << level;
        }
        for (const char filling : {'\0', '\xFF', 'a'}) {
            text.append(size, filling);
            for (const std::uint32_t start : {0u, 1u, 0xFFF0FFF0u}) {
                EXPECT_EQ(ut::adler32(start, text),
                          ::adler32(start, reinterpret_cast<const Bytef*>(text.data()),
                                    static_cast<uInt>(text.size())));
            }
        }
    }
}

TEST(Zlib, StopsAtTheLimit) {
    const std::string bomb = compressed(std::string(std::size_t{8} << 20, '\0'));
    for (const std::uint64_t limit : {0u, 1u, 4096u, 100000u, (8u << 20) - 1}) {
        ut::ByteBuffer target;
        std::size_t consumed = 0;
        Stop stop = Stop::None;
        EXPECT_NE(ut::ZlibEngine::decompress(bomb, target, 0, limit, consumed, stop), 0);
        EXPECT_EQ(stop, Stop::TooLarge);
        EXPECT_LE(target.capacity(), limit + 1);
        EXPECT_EQ(target.size(), limit);
    }
}

TEST(Zlib, EveryTruncationIsSeen) {
    const std::string text = sampleText(9000);
    const std::string stream = compressed(text);
    for (std::size_t size = 0; size < stream.size(); ++size) {
        // In memory of its own, so that reading beyond it is seen as well.
        const std::unique_ptr<char[]> cut = std::make_unique<char[]>(size);
        std::copy_n(stream.data(), size, cut.get());
        ut::ByteBuffer target;
        std::size_t consumed = 0;
        Stop stop = Stop::None;
        ASSERT_NE(
            ut::ZlibEngine::decompress({cut.get(), size}, target, 9000, 1 << 20, consumed, stop),
            0);
        ASSERT_EQ(stop, Stop::Truncated) << size;
        ASSERT_TRUE(text.starts_with(target.view()));
    }
}

TEST(Zlib, CorruptStreams) {
    std::string wrongChecksum = compressed("body");
    wrongChecksum.back() ^= 1;
    const std::string cases[] = {"not a stream", wrongChecksum,
                                 // Asks for a preset dictionary.
                                 std::string("\x78\xBB\x00\x00\x00\x01", 6)};
    for (const std::string& stream : cases) {
        ut::ByteBuffer target;
        std::size_t consumed = 0;
        Stop stop = Stop::None;
        EXPECT_EQ(ut::ZlibEngine::decompress(stream, target, 0, 1000, consumed, stop),
                  Z_DATA_ERROR);
        EXPECT_EQ(stop, Stop::Corrupt);
    }
}

TEST(BinaryStream, BytesAreTheSameOnEverySystem) {
    ut::COBinStream out;
    out.write(std::int32_t{-2});
    out.write(1.5);
    out.write(true);
    out.write(std::wstring_view(L"A\U0001F600"));
    EXPECT_EQ(out.bytes(), std::string("\xFE\xFF\xFF\xFF"
                                       "\0\0\0\0\0\0\xF8\x3F"
                                       "\1"
                                       "\3\0\0\0\x41\0\x3D\xD8\0\xDE",
                                       23));
}

TEST(BinaryStream, TextsSurvive) {
    for (const std::wstring& text :
         {std::wstring(), std::wstring(1, L'\0'), std::wstring(L"\uFFFF\U00010000\U0010FFFF"),
          std::wstring{0xD83D}, std::wstring{0xDE00, 0xD83D}, std::wstring{0xD83D, L'a'}}) {
        ut::COBinStream out;
        out.write(text);
        ut::CIBinStream in(out.bytes());
        std::wstring back = L"x";
        ASSERT_TRUE(in.read(back));
        EXPECT_EQ(back, text);
        EXPECT_EQ(in.remaining(), 0u);
    }
}

TEST(BinaryStream, FailsForGoodAndKeepsTheArgument) {
    std::wstring text = L"kept";
    std::int32_t number = 7;
    for (const std::string& bytes : {std::string("\2\0\0\0\x41\0\x42", 7),
                                     std::string("\xFF\xFF\xFF\xFF"
                                                 "abcdefgh"),
                                     std::string("\xFF\xFF\xFF\x7F"
                                                 "abcdefgh"),
                                     std::string("\1\0\0", 3)}) {
        ut::CIBinStream in(bytes);
        EXPECT_FALSE(in.read(text));
        EXPECT_EQ(text, L"kept");
        EXPECT_FALSE(in.read(number));
        EXPECT_EQ(number, 7);
    }
    ut::CIBinStream in(std::string_view("\2\0\0\0\0", 5));
    bool flag = true;
    double real = 0.5;
    EXPECT_FALSE(in.read(flag));
    EXPECT_TRUE(flag);
    EXPECT_FALSE(in.read(real));
    EXPECT_EQ(real, 0.5);
}

TEST(ByteBuffer, MovesAndKeepsItsContent) {
    ut::ByteBuffer first;
    first.reserve(3);
    std::copy_n("abc", 3, first.data());
    first.setSize(3);
    first.reserve(100000);
    EXPECT_EQ(first.view(), "abc");
    ut::ByteBuffer second(std::move(first));
    ut::ByteBuffer third;
    third.reserve(1);
    third.setSize(1);
    third = std::move(second);
    EXPECT_EQ(third.view(), "abc");
    EXPECT_EQ(third.capacity(), 100000u);
}

}  // namespace
