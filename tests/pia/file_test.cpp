#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <utility>

#include <platen/plotstyle.h>
#include <platen/utcore.h>
#include "tests/support/files.h"
#include "tests/support/trees.h"

namespace {

/// A small table with all five types of items and two levels of blocks.
std::string smallFile() {
    PiaTree tree;
    PiaBlock& root = tree.root();
    EXPECT_TRUE(root.addString(L"description", L"caf\u00E9") &&
                root.addBool(L"aci_table_available", false) &&
                root.addDouble(L"scale_factor", 1.0) && root.addBool(L"apply_factor", false) &&
                root.addBin(L"blob", std::wstring(700, L'A')));
    CPlotStyle style;
    style.updateName(L"Thin line");
    EXPECT_TRUE(style.write(*root.addBlock(L"plot_style"), 0, true));
    PiaFileOut out;
    out.setKind(PiaKind::Stb);
    ut::ByteBuffer file;
    EXPECT_TRUE(out.encode(root, file));
    EXPECT_EQ(out.report().warningCount(), 0U);
    return std::string(file.view());
}

/// Reads everything that can be made of the bytes; true when all of it succeeds.
bool readAsDocument(std::string_view bytes) {
    // At the end of its own allocation, so that a sanitizer sees every byte read beyond it.
    const std::vector<char> exact(bytes.begin(), bytes.end());
    PiaInput input;
    CPlotStyleTable table;
    const bool read = input.openBytes({exact.data(), exact.size()}) && table.init(input);
    EXPECT_EQ(read, !input.report().failure().has_value());
    return read;
}

TEST(PiaFile, HasTheHeaderOfItsKind) {
    const std::pair<int, const char*> cases[] = {
        {0, "CTB"}, {1, "STB"}, {2, "PC3"}, {3, "CTB"}, {-1, "CTB"}};
    for (const auto& [kind, letters] : cases) {
        SCOPED_TRACE(kind);
        PiaTree empty;
        PiaFileOut out;
        out.setKind(kind);
        ut::ByteBuffer file;
        ASSERT_TRUE(out.encode(empty.root(), file));
        ASSERT_GT(file.size(), 60U);
        EXPECT_EQ(file.view().substr(0, 48),
                  std::string("PIAFILEVERSION_2.0,") + letters + "VER1,compress\r\npmzlibcodec");
        // The zlib stream of nothing at level 6: an empty block with fixed codes or a stored one.
        // The checksums are worked out by hand: the running value starts at 0, so the shorter one
        // has a = 8 + 0x78 + 0x9C + 3 + 1 = 288 and b = 8*12 + 0x78*8 + 0x9C*7 + 3*6 + 1 = 2167.
        const std::string_view fixed(
            "\x20\x01\x77\x08\0\0\0\0\x08\0\0\0"
            "\x78\x9C\x03\0\0\0\0\x01",
            20);
        const std::string_view stored(
            "\x1F\x03\xE4\x16\0\0\0\0\x0B\0\0\0"
            "\x78\x9C\x01\0\0\xFF\xFF\0\0\0\x01",
            23);
        const std::string_view found = file.view().substr(48);
        EXPECT_TRUE(found == fixed || found == stored);
        PiaInput input;
        ASSERT_TRUE(input.openBytes(file.view()));
        EXPECT_TRUE(input.root()->items.empty());
        EXPECT_TRUE(input.container().checksumHolds());
        EXPECT_EQ(input.report().warningCount(), 0U);
    }
}

TEST(PiaFile, VerifiesWhatItIsAskedTo) {
    const std::string sound = smallFile();
    const struct {
        std::size_t offset;
        PiaCode code;
        bool PiaReadOptions::*verify;
    } cases[] = {
        {0, PiaCode::HeaderText, &PiaReadOptions::verifyHeaderText},
        {19, PiaCode::HeaderText, &PiaReadOptions::verifyHeaderText},
        {36, PiaCode::HeaderText, &PiaReadOptions::verifyHeaderText},
        {48, PiaCode::Checksum, &PiaReadOptions::verifyChecksum},
        {52, PiaCode::BodyLength, &PiaReadOptions::verifyLengths},
        {59, PiaCode::CompressedLength, &PiaReadOptions::verifyLengths},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.offset);
        std::string changed = sound;
        changed[test.offset] = static_cast<char>(changed[test.offset] ^ 0x5A);
        PiaInput input;
        ASSERT_TRUE(input.openBytes(changed));
        EXPECT_TRUE(std::ranges::any_of(input.report().warnings(), [&](const PiaFinding& warning) {
            return warning.code == test.code;
        }));
        PiaReadOptions options;
        options.*test.verify = true;
        EXPECT_TRUE(input.openBytes(sound, options));
        EXPECT_FALSE(input.openBytes(changed, options));
        EXPECT_EQ(input.report().failure()->code, test.code);
    }
    PiaInput input;
    ASSERT_TRUE(input.openBytes(sound + "rest"));
    EXPECT_EQ(input.report().warnings().at(0).code, PiaCode::BytesAfterStream);
}

TEST(PiaFile, ServesLinesOneByOne) {
    PiaFileIn file;
    ASSERT_EQ(
        file.openBytes(fileAround("first\r\n\nse\xE9\n" + std::string(512, 'x') + "\nlast"), {}),
        0);
    EXPECT_EQ(file.container().encoding, PiaEncoding::Ansi);
    std::vector<std::wstring> lines;
    while (const wchar_t* line = file.readLine()) {
        lines.emplace_back(line);
    }
    EXPECT_EQ(lines, (std::vector<std::wstring>{L"first", L"", L"se\u00E9", std::wstring(511, L'x'),
                                                L"x", L"last"}));
    EXPECT_EQ(file.readLine(), nullptr);
}

TEST(PiaFile, ChoosesTheReaderByTheSixteenthByte) {
    PiaInput input;
    // The sixteenth byte is a "2", so that this is taken for a compressed file.
    EXPECT_FALSE(input.openBytes("{\"data\":{\"a\":  2}}"));
    EXPECT_EQ(input.report().failure()->code, PiaCode::FileTooShort);
    EXPECT_TRUE(input.openBytes("{\"data\":{\"a\":   2}}"));
    EXPECT_EQ(input.container().version, 3);
    EXPECT_FALSE(input.openBytes("no plotter file at all"));
    EXPECT_EQ(input.report().failure()->code, PiaCode::JsonMissing);
    EXPECT_FALSE(input.openBytes(""));
    for (const wchar_t* path : {static_cast<const wchar_t*>(nullptr), L"no such file"}) {
        EXPECT_FALSE(input.open(path));
        EXPECT_EQ(input.report().failure()->code, PiaCode::FileUnreadable);
    }
    PiaFileIn file;
    EXPECT_EQ(file.open(L"no such file"), -2);
    EXPECT_EQ(file.openBytes(fileAround("a=1\n").substr(0, 60) + "xxxx", {}), -3);
}

TEST(PiaFile, WritesWholeFilesOrNone) {
    const TemporaryFolder folder;
    PiaTree tree;
    ASSERT_TRUE(tree.root().addString(L"a", L"first"));
    PiaFileOut out;
    ASSERT_TRUE(out.write(&tree.root(), folder.wide("a.ctb").c_str()));
    EXPECT_EQ(out.status(), 0);
    const std::string first = readBytes(folder.path("a.ctb"));

    PiaTree broken;
    ASSERT_TRUE(broken.root().addString(L"a", L"x\ny"));
    EXPECT_FALSE(out.write(&broken.root(), folder.wide("a.ctb").c_str()));
    EXPECT_FALSE(out.write(nullptr, folder.wide("a.ctb").c_str()));
    EXPECT_FALSE(out.write(&tree.root(), nullptr));
    EXPECT_FALSE(out.write(&tree.root(), folder.wide("no/such/folder.ctb").c_str()));
    EXPECT_EQ(out.status(), -2);
    EXPECT_EQ(out.report().failure()->code, PiaCode::FileUnwritable);
    EXPECT_EQ(readBytes(folder.path("a.ctb")), first);
    EXPECT_EQ(folder.files(), std::vector<std::string>{"a.ctb"});
}

TEST(HostileFile, EveryPrefixIsAnswered) {
    const std::string file = smallFile();
    ASSERT_TRUE(readAsDocument(file));
    for (std::size_t length = 0; length < file.size(); ++length) {
        EXPECT_FALSE(readAsDocument(std::string_view(file).substr(0, length))) << length;
    }
    const std::string body = bodyOf(file);
    for (std::size_t length = 0; length < body.size(); ++length) {
        (void)readAsDocument(fileAround(std::string_view(body).substr(0, length)));
    }
}

TEST(HostileFile, TenThousandChangedBytesAreAnswered) {
    const std::string file = smallFile();
    const std::string body = bodyOf(file);
    std::mt19937 random(20261122);
    int survivors = 0;
    for (int round = 0; round < 10000; ++round) {
        // Every second change goes into the body below the compression.
        std::string changed = round % 2 == 0 ? file : body;
        changed[random() % changed.size()] = static_cast<char>(random());
        survivors += readAsDocument(round % 2 == 0 ? changed : fileAround(changed)) ? 1 : 0;
    }
    // Values and names of styles may change without harm; most changes must not pass.
    EXPECT_GT(survivors, 100);
    EXPECT_LT(survivors, 9000);
}

TEST(HostileFile, BombsAreRefusedInBoundedMemory) {
    const std::string bomb = fileAround(std::string(std::size_t{1} << 30U, '\n'));
    ASSERT_LT(bomb.size(), std::size_t{2} << 20U);
    PiaInput input;
    EXPECT_FALSE(input.openBytes(bomb));
    EXPECT_EQ(input.report().failure()->code, PiaCode::BodyTooLarge);
    // A header that claims 4 GiB allocates nothing of the kind.
    std::string liar = smallFile();
    liar.replace(52, 4, "\xFF\xFF\xFF\xFF");
    EXPECT_TRUE(input.openBytes(liar));
}

TEST(HostileFile, AMillionNestedBlocksAreRefused) {
    std::string body;
    std::string json = "{\"data\":";
    for (int level = 0; level < 1000000; ++level) {
        body += "b{\n";
        json += "{\"b\":";
    }
    PiaInput input;
    EXPECT_FALSE(input.openBytes(fileAround(body)));
    EXPECT_EQ(input.report().failure()->code, PiaCode::TooDeep);
    EXPECT_FALSE(input.openBytes(json));
    EXPECT_EQ(input.report().failure()->code, PiaCode::TooDeep);
}

}  // namespace
