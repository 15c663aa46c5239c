#include <gtest/gtest.h>

#include <utility>

#include "tests/support/trees.h"

namespace {

TEST(JsonReader, AcceptsObjectsOfItems) {
    const std::pair<std::string, std::string> cases[] = {
        {"{}", ""},
        {R"({"b":1,"a":2,"B":3,"ab":4})", "B=3\na=2\nab=4\nb=1\n"},
        {R"({"i":-5,"u":18446744073709551615,"f":0.5,"e":1e3,"z":-0.0})",
         "e=1000.000000\nf=0.500000\ni=-5\nu=18446744073709551615\nz=-0.000000\n"},
        {R"({"t":true,"f":false,"s":"x=y"})", "f=FALSE\ns=\"x=y\nt=TRUE\n"},
        {R"({"n":null,"l":[1,[2],{"x":3}],"x":{"y":{}}})", "x{\n y{\n }\n}\n"},
        {R"({"b":{"value":"AF","voidprop":true}})", "b{\n value=\\AF\\\n}\n"},
        {R"({"b":{"voidprop":false,"value":"AF"}})", "b{\n value=\"AF\n}\n"},
        {R"({"b":{"voidprop":true,"value":5,"other":"x"}})", "b{\n other=\"x\n value=5\n}\n"},
        {R"({"voidprop":"text"})", "voidprop=\"text\n"},
        {R"({"\uD800\uDC00":1,"\uFF5E":2})", "\xF0\x90\x80\x80=1\n\xEF\xBD\x9E=2\n"},
        {R"({"value":"last","zero":"\u0000"})", std::string("value=\"last\nzero=\"\0\n", 20)},
    };
    for (const auto& [data, meaning] : cases) {
        SCOPED_TRACE(data);
        // What stands before the first brace and beside "data" does not matter.
        PiaInput input;
        ASSERT_TRUE(input.openBytes("some header\n{\"x\":{\"data\":1}, \"data\": " + data +
                                    ", \"y\":[{}]}\n"))
            << input.report().failure()->describe();
        EXPECT_EQ(piaBodyText(*input.root()), meaning);
    }
}

TEST(JsonReader, RejectsWithTheReason) {
    const std::pair<std::string, PiaCode> cases[] = {
        {"[]", PiaCode::JsonMissing},
        {"{", PiaCode::JsonSyntax},
        {"{}", PiaCode::JsonNoData},
        {R"({"data":5})", PiaCode::JsonNoData},
        {R"({"Data":{}})", PiaCode::JsonNoData},
        {R"({"x":{"data":{}}})", PiaCode::JsonNoData},
        {R"({"data":{}} x)", PiaCode::JsonSyntax},
        {R"({"data":{"a":01}})", PiaCode::JsonSyntax},
        {R"({"data":{"a":"\uD800"}})", PiaCode::JsonSyntax},
        {R"({"data":{"a":18446744073709551616}})", PiaCode::JsonNumberRange},
        {R"({"data":{"a":-10000000000000000000}})", PiaCode::JsonNumberRange},
        {R"({"data":{"a":1e999}})", PiaCode::JsonSyntax},
        {R"({"data":{},"data":5})", PiaCode::JsonNoData},
        {R"({"data":{"a":1},"data":[]})", PiaCode::JsonNoData},
    };
    for (const auto& [text, code] : cases) {
        SCOPED_TRACE(text);
        PiaInput input;
        EXPECT_FALSE(input.openBytes(text));
        EXPECT_EQ(input.root(), nullptr);
        ASSERT_TRUE(input.report().failure());
        EXPECT_STREQ(piaCodeWord(input.report().failure()->code), piaCodeWord(code));
    }
    PiaInput input;
    EXPECT_FALSE(input.openBytes("head\n{\"data\":{\"a\":01}}"));
    EXPECT_EQ(input.report().failure()->offset, 20U);
}

TEST(JsonReader, OfMembersOfOneNameTheLastCounts) {
    const struct {
        std::string text;
        std::string meaning;
        std::vector<std::wstring> paths;
    } cases[] = {
        {R"({"data":{"a":1,"b":2,"a":"x"}})", "a=\"x\nb=2\n", {L"a"}},
        {R"({"data":{"a":{"x":1,"y":{}},"a":{"z":2}}})", "a{\n z=2\n}\n", {L"a"}},
        {R"({"data":{"a":{"x":1},"a":5}})", "a=5\n", {L"a"}},
        {R"({"data":{"a":5,"a":{"x":1,"x":2}}})", "a{\n x=2\n}\n", {L"a/x", L"a"}},
        {R"({"data":{"a":true,"a":false,"a":true}})", "a=TRUE\n", {L"a", L"a"}},
        // What is no item replaces one, and is replaced by one.
        {R"({"data":{"a":1,"a":null}})", "", {L"a", L"a"}},
        {R"({"data":{"a":[1],"a":1}})", "a=1\n", {L"a", L"a"}},
        {R"({"data":{"value":"x","value":"y"}})", "value=\"y\n", {L"value"}},
        {R"({"data":{"value":{},"value":"y","voidprop":true}})", "value=\\y\\\n", {L"value"}},
        {R"({"data":{"value":"y","value":3,"voidprop":true}})", "value=3\n", {L"value"}},
        {R"({"data":{"voidprop":true,"value":"y","voidprop":false}})",
         "value=\"y\n",
         {L"voidprop"}},
        {R"({"data":{"voidprop":true,"value":"y","voidprop":"z"}})",
         "value=\"y\nvoidprop=\"z\n",
         {L"voidprop"}},
        {R"({"data":{"voidprop":"z","value":"y","voidprop":true}})",
         "value=\\y\\\n",
         {L"voidprop"}},
        {R"({"data":{"a":1,"b":{"c":{}}},"data":{"b":2}})", "b=2\n", {L"data"}},
        {R"({"data":5,"data":{"a":1}})", "a=1\n", {L"data"}},
        {R"({"a":1,"a":2,"data":{}})", "", {}},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.text);
        PiaInput input;
        ASSERT_TRUE(input.openBytes(test.text));
        EXPECT_EQ(piaBodyText(*input.root()), test.meaning);
        std::vector<std::wstring> paths;
        for (const PiaFinding& finding : input.report().warnings()) {
            paths.push_back(finding.path);
        }
        EXPECT_EQ(paths, test.paths);
    }
}

// With a look at all members for each one, this would take hours.
TEST(JsonReader, TakesRepetitionInOnePass) {
    constexpr int count = 100000;
    std::string once;
    std::string twice;
    std::string same;
    std::string data;
    for (int number = 0; number < count; ++number) {
        const std::string digits = std::to_string(number);
        once += '"' + digits + "\":1,";
        twice += '"' + digits + "\":{},";
        same += "\"a\":{\"x\":" + digits + "},";
        data += "\"data\":{\"x\":" + digits + "},";
    }
    const std::string longName(1000000, 'n');
    PiaInput input;
    ASSERT_TRUE(input.openBytes("{" + data + "\"data\":{\"" + longName + "\":{" + once + twice +
                                same + "\"last\":1}}}"));
    const auto* block = static_cast<const PiaBlock*>(input.root()->items.at(0));
    EXPECT_EQ(block->items.size(), count + 2U);
    const auto* last = static_cast<const PiaBlock*>(block->findItem(L"a", PiaItemType::Block));
    ASSERT_NE(last, nullptr);
    EXPECT_EQ(static_cast<const PiaNum*>(last->items.at(0))->value, std::to_wstring(count - 1));
    EXPECT_EQ(input.report().warningCount(), 3U * count - 1);
    EXPECT_EQ(input.report().warnings().size(), PiaReport::maxWarnings);
    for (const PiaFinding& finding : input.report().warnings()) {
        ASSERT_LE(finding.path.size(), 10000U);
    }
}

TEST(JsonReader, BoundsDepthAndItems) {
    const auto nested = [](int levels) {
        std::string text = "{\"data\":{";
        for (int level = 0; level < levels; ++level) {
            text += "\"b\":{";
        }
        return text + std::string(static_cast<std::size_t>(levels) + 2, '}');
    };
    PiaInput input;
    EXPECT_TRUE(input.openBytes(nested(128)));
    EXPECT_FALSE(input.openBytes(nested(129)));
    EXPECT_EQ(input.report().failure()->code, PiaCode::TooDeep);
    PiaReadOptions options;
    options.limits.items = 2;
    EXPECT_TRUE(input.openBytes("{\"data\":{\"a\":1,\"b\":{}}}", options));
    EXPECT_FALSE(input.openBytes("{\"data\":{\"a\":1,\"b\":{\"c\":1}}}", options));
    EXPECT_EQ(input.report().failure()->code, PiaCode::TooManyItems);
}

TEST(JsonReader, ReadsTextThatIsNotUtf8InTheAnsiCodePage) {
    PiaInput input;
    ASSERT_TRUE(input.openBytes("{\"data\": {\"a\": \"\xE9\"}}"));
    EXPECT_EQ(input.container().encoding, PiaEncoding::Ansi);
    EXPECT_EQ(input.container().bodyBytes, 20U);
    EXPECT_EQ(piaBodyText(*input.root()), "a=\"\xC3\xA9\n");
}

// Every item of these trees comes back, or the writer says that it will not.
TEST(JsonWriter, WritesWhatTheReaderReads) {
    const std::pair<const char*, std::size_t> cases[] = {
        {"", 0},
        {"a=1\nb{\n c=0.500000\n d=TRUE\n value=\"x\n}\nz=\"\xC3\xA9\n", 0},
        {"b{\n value=\\AF\\\n}\n", 0},
        {"a=-9223372036854775808\nb=18446744073709551615\n", 0},
        {"a=0.5\n", 1},
        {"a=007\n", 1},
        {"a=-0\n", 1},
        {"a=1e-9\n", 1},
        {"a=abc\n", 1},
        {"a=18446744073709551616\n", 1},
        {"a=\\AF\\\n", 1},
        {"a=1\na=\"1\n", 1},
        {"b{\n value=\"x\n value=\\AF\\\n}\n", 2},
        {"voidprop=TRUE\n", 1},
    };
    for (const auto& [body, warnings] : cases) {
        SCOPED_TRACE(body);
        PiaInput first;
        ASSERT_TRUE(first.openBody(body));
        std::string json;
        PiaReport report;
        ASSERT_TRUE(piaWriteJson(*first.root(), json, report));
        EXPECT_EQ(report.warningCount(), warnings);
        ASSERT_GE(json.size(), 16U);
        EXPECT_NE(json[15], '2');
        PiaInput again;
        ASSERT_TRUE(again.openBytes(json));
        EXPECT_EQ(again.container().version, 3);
        EXPECT_EQ(equalTrees(*first.root(), *again.root()), warnings == 0);
    }
}

}  // namespace
