#include <gtest/gtest.h>
#include <zlib.h>

#include <limits>
#include <tuple>
#include <utility>

#include <platen/utcore.h>
#include "platform/utcore/codec.h"

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

/// What `decompress` gives.
struct Inflated {
    Inflated(std::string_view stream, std::uint64_t hint, std::uint64_t limit)
        : result(ut::ZlibEngine::decompress(stream, target, hint, limit, consumed, stop)) {}

    ut::ByteBuffer target;
    std::size_t consumed = 7;
    Stop stop = Stop::TooLarge;
    int result;
};

/// The same from zlib itself.
std::string compressedByZlib(const std::string& text, int level) {
    uLong length = compressBound(static_cast<uLong>(text.size()));
    std::string stream(length, '\0');
    EXPECT_EQ(compress2(reinterpret_cast<Bytef*>(stream.data()), &length,
                        reinterpret_cast<const Bytef*>(text.data()),
                        static_cast<uLong>(text.size()), level),
              Z_OK);
    stream.resize(length);
    return stream;
}

TEST(Zlib, AppendsWhatItCompresses) {
    ut::ByteBuffer target;
    target.reserve(4);
    std::copy_n("head", 4, target.data());
    target.setSize(4);
    ASSERT_EQ(ut::ZlibEngine::compress("body", target, 9), 0);
    const std::size_t capacity = target.capacity();
    ut::ByteBuffer moved;
    moved.reserve(1);
    moved = std::move(target);
    EXPECT_TRUE(moved.view().starts_with("head\x78"));
    EXPECT_EQ(moved.capacity(), capacity);
    for (const int level : {-2, 10}) {
        EXPECT_EQ(ut::ZlibEngine::compress("body", moved, level), Z_STREAM_ERROR);
    }
    EXPECT_EQ(ut::codec::adler32(7, {}), 7u);
}

// The streams of zlib are the measure, whatever deflates here, and whatever is said of their size.
TEST(Zlib, AgreesWithTheLibrary) {
    constexpr std::uint64_t most = std::numeric_limits<std::uint64_t>::max();
    for (const std::size_t size : {0u, 1u, 4095u, 4096u, 4097u, 300000u}) {
        for (const std::string& text : {sampleText(size), std::string(size, 'a')}) {
            for (int level = Z_DEFAULT_COMPRESSION; level <= 9; ++level) {
                SCOPED_TRACE(testing::Message() << size << " at level " << level);
                const std::string packed = compressed(text, level);
                std::string back(size + 1, '\0');
                auto length = static_cast<uLong>(back.size());
                EXPECT_EQ(uncompress(reinterpret_cast<Bytef*>(back.data()), &length,
                                     reinterpret_cast<const Bytef*>(packed.data()),
                                     static_cast<uLong>(packed.size())),
                          Z_OK);
                EXPECT_TRUE(std::string_view(back).substr(0, length) == text);
                const std::string stream = compressedByZlib(text, level);
                EXPECT_LE(packed.size(), stream.size() + stream.size() / 20 + 11);
                for (const std::uint64_t hint : std::initializer_list<std::uint64_t>{
                         0, size - size / 9, size, size + 1, 1U << 28, most}) {
                    for (const std::uint64_t limit : {std::uint64_t{size}, most}) {
                        const Inflated got(stream + "behind", hint, limit);
                        ASSERT_EQ(got.result, 0);
                        EXPECT_EQ(got.stop, Stop::None);
                        EXPECT_EQ(got.consumed, stream.size());
                        EXPECT_TRUE(got.target.view() == text);
                        // What is claimed must not cost memory that such a stream rarely fills.
                        EXPECT_LE(
                            got.target.capacity(),
                            std::max({std::size_t{4097}, (stream.size() + 6) * 128 + 1, 2 * size}));
                    }
                }
            }
        }
    }
}

TEST(Zlib, StopsAtTheLimit) {
    const std::string bomb = compressed(std::string(std::size_t{8} << 20, '\0'));
    for (const std::uint64_t limit : {0u, 1u, 4096u, 100000u, (8u << 20) - 1}) {
        const Inflated got(bomb, 0, limit);
        EXPECT_NE(got.result, 0);
        EXPECT_EQ(got.stop, Stop::TooLarge);
        EXPECT_LE(got.target.capacity(), limit + 1);
        EXPECT_EQ(got.target.size(), limit);
    }
}

TEST(Zlib, EveryTruncationIsSeen) {
    const std::string text = sampleText(9000);
    for (const std::string& stream : {compressed(text), compressedByZlib(text, 0)}) {
        for (std::size_t size = 0; size < stream.size(); ++size) {
            // In memory of its own, so that reading beyond it is seen as well.
            const std::unique_ptr<char[]> cut = std::make_unique<char[]>(size);
            std::copy_n(stream.data(), size, cut.get());
            const Inflated got({cut.get(), size}, 9000, 1 << 20);
            ASSERT_EQ(got.result, Z_BUF_ERROR);
            ASSERT_EQ(got.stop, Stop::Truncated) << size;
            ASSERT_EQ(got.consumed, size);
            ASSERT_TRUE(text.starts_with(got.target.view()));
        }
    }
}

TEST(Zlib, CorruptStreams) {
    std::string wrongChecksum = compressed("body");
    wrongChecksum.back() ^= 1;
    const std::tuple<std::string, std::size_t, std::string_view> cases[] = {
        {"not a stream", 2, ""},
        {wrongChecksum + "tail", wrongChecksum.size(), "body"},
        // Asks for a preset dictionary.
        {std::string("\x78\xBB\x00\x00\x00\x01", 6), 6, ""},
        // A stored block whose length is not that of its complement, after one that is sound.
        {std::string("\x78\x9C\x00\x01\x00\xFE\xFF!\x01\x01\x00\xFE\xFE!", 14), 13, "!"},
    };
    for (const auto& [stream, consumed, before] : cases) {
        const Inflated got(stream, 0, 1000);
        EXPECT_EQ(got.result, Z_DATA_ERROR);
        EXPECT_EQ(got.stop, Stop::Corrupt);
        EXPECT_EQ(got.consumed, consumed);
        EXPECT_EQ(got.target.view(), before);
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
        EXPECT_FALSE(in.read(text) || in.read(number));
        EXPECT_EQ(std::pair(text, number), std::pair(std::wstring(L"kept"), 7));
    }
    ut::CIBinStream in(std::string_view("\2\0\0\0\0", 5));
    bool flag = true;
    double real = 0.5;
    EXPECT_FALSE(in.read(flag) || in.read(real));
    EXPECT_EQ(std::pair(flag, real), std::pair(true, 0.5));
}

}  // namespace
