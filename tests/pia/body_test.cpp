#include <gtest/gtest.h>

#include <utility>

#include "tests/support/trees.h"

namespace {

std::string quoted(std::string text) {
    return text.size() > 80 ? text.substr(0, 80) + "..." : text;
}

std::wstring stringAt(const PiaBlock& block, std::wstring_view name) {
    std::wstring value = L"(missing)";
    EXPECT_TRUE(block.getString(value, name));
    return value;
}

// That the entries are those of the tree is for the fuzzer of bodies, which is given such lists.
TEST(BodyReader, HandsOverTheEntriesOfAList) {
    EntryRecorder whole(L"list");
    PiaInput read;
    ASSERT_TRUE(whole.openBody(read, "list{\n 0{\n  a=1\n }\n x=1\n 1{\n  b=2\n }\n}\n"));
    EXPECT_EQ(whole.text, "0{1\na=1\n}\n2 3\n1{1\nb=2\n}\n6 7\n");
    // Entries that are alike, up to a line that is too long and one that the body ends in.
    const std::string cut(512, 'x');
    EntryRecorder alike(L"list");
    ASSERT_TRUE(alike.openBody(read,
                               "list{\n 0{\n  a=1\n  b=\"x\n  c=TRUE\n  d=1\n }\n"
                               " 1{\n  a=2\n  b=\"yy\n  c=false\n  d=3\n }\n"
                               " 2{\n  a=4\n  b=\"" +
                                   cut +
                                   "=1\n  c=true\n  d=5\n }\n"
                                   " 3{\n  a=4567890123"));
    EXPECT_EQ(alike.text,
              "0{4\na=1\nb=\"x\nc=TRUE\nd=1\n}\n2 3 4 5 6\n"
              "1{4\na=2\nb=\"yy\nc=FALSE\nd=3\n}\n8 9 10 11 12\n"
              "2{5\na=4\nb=\"" +
                  cut.substr(6) +
                  "\nxxxxxx=1\nc=TRUE\nd=5\n}\n"
                  "14 15 16 16 17 18\n3{1\na=4567890123\n}\n20 21\n");
    // Names are checked all the same.
    for (const char* twice : {"list{\n 0{\n  a=1\n }\n 0{\n }\n}\n",
                              "list{\n 0{\n  a=1\n }\n 1{\n  a=1\n  a=2\n }\n}\n"}) {
        EntryRecorder recorder(L"list");
        PiaInput input;
        EXPECT_FALSE(recorder.openBody(input, twice));
        EXPECT_EQ(input.report().failure()->code, PiaCode::Duplicate);
    }
}

// Each line alone: what it reads as, in the unlimited text form of the tree.
TEST(BodyReader, AcceptsItemsAndBlocks) {
    const std::pair<std::string, std::string> cases[] = {
        {"", ""},
        {"\n\n\n", ""},
        {"a=1", "a=1\n"},
        {"a=1\r\n", "a=1\n"},
        {"   a   =1\n", "a=1\n"},
        {"a= 1 \n", "a= 1 \n"},
        {"a=\"\n", "a=\"\n"},
        {"a=\"  two  spaces\n", "a=\"  two  spaces\n"},
        {"a=\"x=y{z}\"\\\n", "a=\"x=y{z}\"\\\n"},
        {"a=TRUE\nb=true\nc=tRuE\nd=False\n", "a=TRUE\nb=TRUE\nc=TRUE\nd=FALSE\n"},
        {"a=TRUE \n", "a=TRUE \n"},
        {"a=abc\n", "a=abc\n"},
        {"a=\\\\\n", "a=\\\\\n"},
        {"a=\\one\ntwo\n\nthree\\\nb=1\n", "a=\\onetwothree\\\nb=1\n"},
        {"a{\n}\n", "a{\n}\n"},
        {"a{\n b=1\n}\nc=2\n", "a{\n b=1\n}\nc=2\n"},
        {"a{\nb{\nc=1", "a{\n b{\n  c=1\n }\n}\n"},
        {" a {\n } \n", "a{\n}\n"},
        {"a{b=1\n", "a{b=1\n"},
        {"a}b=1\n", "a}b=1\n"},
        {"a{\nb=}\n}\n", "a{\n b=}\n}\n"},
        {"a=1\na=\"1\na{\n}\na=\\1\\\na=TRUE\n", "a=1\na=\"1\na{\n}\na=\\1\\\na=TRUE\n"},
        {"\xC3\xA9=\"\xE2\x82\xAC\n", "\xC3\xA9=\"\xE2\x82\xAC\n"},
        // One byte that is not UTF-8, lines later, makes all of it ANSI.
        {"a=\"\xC3\xA9\nb=\"\x80\x81\n", "a=\"\xC3\x83\xC2\xA9\nb=\"\xE2\x82\xAC\xC2\x81\n"},
    };
    for (const auto& [body, meaning] : cases) {
        SCOPED_TRACE(quoted(body));
        PiaInput input;
        ASSERT_TRUE(input.openBody(body)) << input.report().failure()->describe();
        EXPECT_EQ(piaBodyText(*input.root()), meaning);
    }
}

// Blank lines, pieces of long lines and binary values that go on count as the lines they are.
TEST(BodyReader, ItemsKnowTheirLines) {
    const std::string blocks = "a=1\n\nb{\n\n c=\"x\n d{\n }\n}\nb2{\n c=\"y\n d{\n }\n}\nlong=\"" +
                               std::string(508, 'x') + "rest=1\nlast=\\AF\nBF\\\r\nfull=\"" +
                               std::string(505, 'x') + "\nend=\"" + std::string(506, 'x') +
                               "rest=1";
    const std::vector<std::uint32_t> expected{1, 3, 5, 6, 9, 10, 11, 14, 14, 15, 17, 18, 18};
    for (const std::uint32_t before : {0U, 1U}) {
        // A line that is not ASCII makes the reader take the careful way.
        PiaInput input;
        ASSERT_TRUE(input.openBody((before == 1 ? "\xC3\xA9=1\n" : "") + blocks));
        std::vector<std::uint32_t> lines = linesOf(*input.root());
        lines.erase(lines.begin(), lines.begin() + before);
        for (std::uint32_t& line : lines) {
            line -= before;
        }
        EXPECT_EQ(lines, expected);
        EXPECT_EQ(input.root()->line(), 1U);
    }
    PiaInput json;
    ASSERT_TRUE(json.openBytes("{\"data\":{\"a\":{\"b\":1}}}"));
    EXPECT_EQ(linesOf(*json.root()), (std::vector<std::uint32_t>{0, 0}));
    EXPECT_EQ(PiaNum(L"made", 1).line(), 0U);
}

TEST(BodyReader, RejectsWithTheReasonAndThePlace) {
    std::string deep;
    for (int level = 0; level < 129; ++level) {
        deep += "b{\n";
    }
    const struct {
        std::string body;
        PiaCode code;
        std::uint64_t line;
        std::uint64_t offset;
        std::wstring path;
    } cases[] = {
        {"a=1\n }\n", PiaCode::LineInvalid, 2, 4, L""},
        {"   \n", PiaCode::LineInvalid, 1, 0, L""},
        {"a=1\nplain\n", PiaCode::LineInvalid, 2, 4, L""},
        {"a=\n", PiaCode::ValueEmpty, 1, 0, L""},
        {"=1\n", PiaCode::NameEmpty, 1, 0, L""},
        {"  =1\n", PiaCode::NameEmpty, 1, 0, L""},
        {"{\n}\n", PiaCode::NameEmpty, 1, 0, L""},
        {"a{\n{\n}\n", PiaCode::NameEmpty, 2, 3, L"a"},
        {"a b=1\n", PiaCode::NameHasSpace, 1, 0, L""},
        {"a b{\n}\n", PiaCode::NameHasSpace, 1, 0, L""},
        {"a{\n}b=1\n", PiaCode::BraceBeforeEquals, 2, 3, L"a"},
        {"a{\nb{\nx=1\nx=2\n", PiaCode::Duplicate, 4, 10, L"a/b/x"},
        {"a{\n}\na{\n}\n", PiaCode::Duplicate, 3, 5, L"a"},
        {"1 =1\n1=2\n", PiaCode::Duplicate, 2, 5, L"1"},
        {"a{\nx=\\abc\ndef", PiaCode::BinUnterminated, 3, 10, L"a/x"},
        {"s{\na=1\nb=1\n}\nt{\nb=1\na=1\nb=2\n}\n", PiaCode::Duplicate, 8, 24, L"t/b"},
        {deep, PiaCode::TooDeep, 129, 384, L""},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(quoted(test.body));
        PiaInput input;
        ASSERT_FALSE(input.openBody(test.body));
        EXPECT_EQ(input.root(), nullptr);
        const PiaFinding& failure = input.report().failure().value();
        EXPECT_STREQ(piaCodeWord(failure.code), piaCodeWord(test.code));
        EXPECT_EQ(failure.line, test.line);
        EXPECT_EQ(failure.offset, test.offset);
        if (test.code != PiaCode::TooDeep) {
            EXPECT_EQ(failure.path, test.path);
        }
    }
}

TEST(BodyReader, TakesOptionsForItsLimits) {
    PiaReadOptions options;
    options.limits = {.bodyBytes = 16, .depth = 2, .items = 3};
    PiaInput input;
    EXPECT_TRUE(input.openBody("a{\nb{\nc=1234567\n", options));
    for (const auto& [body, code] : {std::pair("a{\nb{\nc{\n", PiaCode::TooDeep),
                                     {"a=1\nb=1\nc=1\nd=1\n", PiaCode::TooManyItems},
                                     {"a=12345678901234\n", PiaCode::BodyTooLarge}}) {
        EXPECT_FALSE(input.openBody(body, options));
        EXPECT_EQ(input.report().failure()->code, code) << body;
    }
    // Entries of a list count as well when they are alike.
    const char* const alike = "list{\n 0{\n  a=1\n  b=1\n }\n 1{\n  a=1\n  b=1\n }\n}\n";
    for (const std::size_t items : {5U, 6U, 7U}) {
        EntryRecorder recorder(L"list");
        EXPECT_EQ(recorder.openBody(input, alike, {.limits = {.items = items}}), items == 7);
    }
}

TEST(BodyReader, NotesWhatItTolerates) {
    const std::pair<std::string, std::vector<PiaCode>> cases[] = {
        {"a=1\n", {}},
        {"a{\nb{\n", {PiaCode::MissingClosingBrace}},
        {"a{ x\ny}z\n", {PiaCode::TextIgnored, PiaCode::TextIgnored}},
        {"a=\\b\\c\n", {PiaCode::TextIgnored}},
        {std::string("a=\"b\0c\n", 7), {PiaCode::NulInLine}},
        {"a=\"" + std::string(600, '=') + "\n", {PiaCode::LineSplit}},
        {"a=\\" + std::string(6000, 'x') + "\\\n", {}},
    };
    for (const auto& [body, codes] : cases) {
        SCOPED_TRACE(quoted(body));
        PiaInput input;
        (void)input.openBody(body);
        ASSERT_EQ(input.report().warningCount(), codes.size());
        for (std::size_t index = 0; index < codes.size(); ++index) {
            EXPECT_EQ(input.report().warnings()[index].code, codes[index]);
        }
    }
}

// One read takes 511 bytes, the line feed included. What is left of a longer line is a line.
TEST(BodyReader, SplitsLinesAtTheReadSize) {
    for (const char* lineEnd : {"\n", "\r\n"}) {
        for (std::size_t length = 509; length <= 513; ++length) {
            SCOPED_TRACE(std::to_string(length) + (lineEnd[0] == '\r' ? " CRLF" : " LF"));
            // The 511th byte onwards would be the line "z=2".
            std::string line = "a=\"" + std::string(508, 'x') + "z=2";
            line.resize(length, '?');
            PiaInput input;
            const bool read = input.openBody(line + lineEnd + "b=3\n");
            if (length <= 511) {
                ASSERT_TRUE(read);
                EXPECT_EQ(stringAt(*input.root(), L"a").size(), length - 3);
            } else {
                // "z" or "z=" alone is no line.
                ASSERT_FALSE(read);
                EXPECT_EQ(input.report().failure()->line, 1U);
                EXPECT_EQ(input.report().failure()->offset, 511U);
                EXPECT_EQ(input.report().warnings().at(0).code, PiaCode::LineSplit);
            }
        }
        PiaInput input;
        ASSERT_TRUE(input.openBody("a=\"" + std::string(508, 'x') + "z=2" + lineEnd + "b=3\n"));
        EXPECT_EQ(piaBodyText(*input.root()).substr(512), "z=2\nb=3\n");
    }
}

TEST(BodyReader, DecodesAPieceThatEndsInsideACharacterLeniently) {
    // The two bytes of U+00E9 stand on both sides of the 511th byte.
    const std::string body = "a=\"" + std::string(507, 'x') + "\xC3\xA9=1\n";
    PiaInput input;
    ASSERT_TRUE(input.openBody(body)) << input.report().failure()->describe();
    EXPECT_EQ(input.container().encoding, PiaEncoding::Utf8);
    EXPECT_EQ(stringAt(*input.root(), L"a"), std::wstring(507, L'x') + L"\u00C3");
    EXPECT_NE(input.root()->findItem(L"\u00A9", PiaItemType::Num), nullptr);
    std::size_t lenient = 0;
    for (const PiaFinding& warning : input.report().warnings()) {
        lenient += warning.code == PiaCode::LineDecodedLeniently ? 1U : 0U;
    }
    EXPECT_EQ(lenient, 2U);
}

TEST(BodyReader, ReadsLargeBlocksInOnePass) {
    std::string body;
    for (int number = 0; number < 1000000; ++number) {
        body += "n" + std::to_string(number) + "=1\n";
    }
    PiaInput input;
    ASSERT_TRUE(input.openBody(body));
    EXPECT_EQ(input.root()->items.size(), 1000000U);
    EXPECT_NE(input.root()->findItem(L"n999999", PiaItemType::Num), nullptr);
    EXPECT_FALSE(input.openBody(body + "n500000=2\n"));
    EXPECT_EQ(input.report().failure()->path, L"n500000");
    EXPECT_EQ(input.report().failure()->line, 1000001U);
}

TEST(BodyWriter, CutsLinesAt511CharactersAndSaysSo) {
    for (const std::size_t depth : {std::size_t{0}, std::size_t{2}}) {
        for (std::size_t length = 510; length <= 513; ++length) {
            SCOPED_TRACE(std::to_string(depth) + " " + std::to_string(length));
            PiaTree tree;
            PiaBlock* block = &tree.root();
            for (std::size_t level = 0; level < depth; ++level) {
                block = block->addBlock(L"b");
            }
            ASSERT_TRUE(block->addString(L"a", std::wstring(length - depth - 3, L'x')));
            std::string body;
            PiaReport report;
            ASSERT_TRUE(piaWriteBody(tree.root(), body, report));
            const std::size_t start = body.find("a=") - depth;
            EXPECT_EQ(body.find('\n', start) - start, std::min<std::size_t>(length, 511));
            ASSERT_EQ(report.warningCount(), length > 511 ? 1U : 0U);
            if (length > 511) {
                EXPECT_EQ(report.warnings()[0].code, PiaCode::LineCut);
                EXPECT_EQ(report.warnings()[0].path, depth == 0 ? L"a" : L"b/b/a");
            }
            PiaInput again;
            ASSERT_TRUE(again.openBody(body));
            EXPECT_EQ(equalTrees(tree.root(), *again.root()), length <= 511);
        }
    }
}

// A character beyond the basic plane takes two of the 511, on every system, and two "?".
TEST(BodyWriter, CountsAndReplacesUtf16Units) {
    PiaTree tree;
    ASSERT_TRUE(tree.root().addString(L"a", std::wstring(507, L'x') + L"\U0001F600z"));
    std::string body;
    PiaReport report;
    ASSERT_TRUE(piaWriteBody(tree.root(), body, report));
    // One unit is left: no half of a pair is written.
    EXPECT_EQ(body, "a=\"" + std::string(507, 'x') + "\n");
    EXPECT_EQ(report.warningCount(), 1U);
    body.clear();
    PiaTree other;
    ASSERT_TRUE(other.root().addString(L"a", L"\U0001F600\u0416"));
    ASSERT_TRUE(piaWriteBody(other.root(), body, report));
    EXPECT_EQ(body, "a=\"???\n");
}

TEST(BodyWriter, WarnsOfWhatDoesNotReadBack) {
    const auto make = [](PiaItemType type, const std::wstring& name,
                         const std::wstring& value) -> PiaItem* {
        return type == PiaItemType::Block ? static_cast<PiaItem*>(new PiaBlock(name))
               : type == PiaItemType::Bin ? new PiaBin(name, value)
               : type == PiaItemType::Str ? new PiaStr(name, value)
                                          : static_cast<PiaItem*>(new PiaNum(name, value));
    };
    using enum PiaItemType::Value;
    const struct {
        const char* what;
        PiaItemType type;
        const wchar_t* name;
        std::wstring value;
        bool inBlock;
        bool readsBack;
    } cases[] = {
        {"empty name", Num, L"", L"1", false, false},
        {"space in name", Num, L"a b", L"1", false, false},
        {"equals in name", Num, L"a=b", L"1", false, false},
        {"brace in item", Num, L"a{b", L"1", false, true},
        {"brace in block", Block, L"a{b", L"", false, false},
        {"closing, root", Num, L"a}b", L"1", false, true},
        {"closing, root block", Block, L"a}b", L"", false, true},
        {"closing, inner", Num, L"a}b", L"1", true, false},
        {"closing block", Block, L"a}b", L"", true, false},
        {"no number", Num, L"a", L"", false, false},
        {"quote", Num, L"a", L"\"1", false, false},
        {"bool number", Num, L"a", L"True", false, false},
        {"backslash", Bin, L"a", L"1\\2", false, false},
        {"cr at end", Str, L"a", L"1\r", false, false},
        {"cr inside", Str, L"a", L"1\r2", false, true},
        {"cr in bin", Bin, L"a", L"1\r", false, true},
        {"long bin", Bin, L"a", std::wstring(3000, L'F'), true, true},
        {"nul", Str, L"a", std::wstring{L'1', L'\0', L'2'}, false, false},
        {"utf-8 by chance", Str, L"a", L"\u00C3\u00A9", false, false},
        {"lost", Str, L"a", L"\u0416", false, false},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.what);
        PiaTree tree;
        PiaBlock* parent = test.inBlock ? tree.root().addBlock(L"p") : &tree.root();
        ASSERT_TRUE(parent->addItem(make(test.type, test.name, test.value)));
        std::string body;
        PiaReport report;
        ASSERT_TRUE(piaWriteBody(tree.root(), body, report));
        EXPECT_EQ(report.warningCount() == 0, test.readsBack);
        PiaInput again;
        const bool equal = again.openBody(body) && equalTrees(tree.root(), *again.root());
        EXPECT_EQ(equal, test.readsBack);
    }
}

TEST(BodyWriter, RefusesLineBreaks) {
    for (const auto& [name, value] : {std::pair(L"a", L"x\ny"), {L"a\nb", L""}}) {
        PiaTree tree;
        ASSERT_TRUE(tree.root().addString(std::wstring_view(name), value));
        std::string body;
        PiaReport report;
        EXPECT_FALSE(piaWriteBody(tree.root(), body, report));
        EXPECT_EQ(report.failure()->code, PiaCode::LineBreakInValue);
    }
}

TEST(BodyReader, KeepsLongBinaryValuesHoweverTheyAreBroken) {
    const std::wstring value(5000, L'A');
    for (const std::size_t step :
         {std::size_t{5000}, std::size_t{502}, std::size_t{511}, std::size_t{7}}) {
        std::string body = "a=\\";
        for (std::size_t start = 0; start < value.size(); start += step) {
            body += std::string(std::min(step, value.size() - start), 'A') + "\n";
        }
        body.back() = '\\';
        PiaInput input;
        ASSERT_TRUE(input.openBody(body + "\nb=1\n")) << step;
        ASSERT_EQ(input.root()->items.size(), 2U);
        EXPECT_EQ(static_cast<const PiaBin*>(input.root()->items[0])->value, value) << step;
    }
}

}  // namespace
