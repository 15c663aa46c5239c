// Items used as a program uses them that takes a name or value for the `std::wstring` it looks
// like.

#include <gtest/gtest.h>
#include <platen/pia.h>

#include <algorithm>
#include <cwchar>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <unordered_set>
#include <vector>

namespace {

std::size_t lengthOf(const std::wstring& text) { return text.length(); }

/// Every form that a constant text has.
template <class Text>
void useAsText(const Text& text, const std::wstring& expected) {
    std::wstring copy = text;
    const std::wstring& bound = text;
    const std::wstring_view view = text;
    EXPECT_TRUE(copy == expected && bound == expected && view == expected);
    copy = text;
    copy += text;
    EXPECT_EQ(copy, expected + expected);
    const std::size_t size = expected.size();
    EXPECT_TRUE(lengthOf(text) == size && text.size() == size && text.length() == size);
    EXPECT_EQ(text.empty(), expected.empty());
    EXPECT_EQ(std::wcslen(text.c_str()), size);
    EXPECT_TRUE(text.data()[size] == L'\0' && text[size] == L'\0');
    EXPECT_THROW((void)text.at(size), std::out_of_range);
    EXPECT_THROW((void)text.substr(size + 1), std::out_of_range);
    EXPECT_EQ(std::wstring(text.begin(), text.end()), expected);
    EXPECT_TRUE(std::equal(text.rbegin(), text.rend(), expected.rbegin(), expected.rend()));

    EXPECT_TRUE(text == expected && expected == text && text == expected.c_str() && text == view);
    EXPECT_TRUE(text == text && !(text != text) && text != L"other" && L"other" != text);
    EXPECT_TRUE(text < L"\uFFFD" && L" " < text && text <= expected && expected >= text);
    EXPECT_EQ(text <=> expected, std::strong_ordering::equal);

    const std::wstring around = L"a" + expected + L"z";
    EXPECT_TRUE(L"a" + text + L"z" == around && std::wstring(L"a") + text + L'z' == around);
    EXPECT_EQ(L'a' + (text + std::wstring_view(L"z")), around);
    EXPECT_EQ(L'a' + text + (text + L'z'), L"a" + expected + expected + L"z");
    EXPECT_EQ(text + text, expected + expected);

    std::wostringstream out;
    out << text << L'|';
    EXPECT_EQ(out.str(), expected + L'|');
    std::map<std::wstring, int> ordered;
    ordered[text] = 7;
    EXPECT_EQ(ordered.at(expected), 7);
    EXPECT_EQ(std::hash<Text>()(text), std::hash<std::wstring>()(expected));
    EXPECT_EQ(std::unordered_set<std::wstring>{expected}.count(text), 1U);
}

TEST(ItemsAsCallersWrite, NamesAndValuesReadAsWideStrings) {
    // Values that lie in the body as ASCII, wide ones in the tree's memory, and a caller's own.
    PiaInput input;
    ASSERT_TRUE(
        input.openBody("name=\"12 ab\nnumber=12.50\nbin=\\0AFF\\\nwide=\"\xC3\xA9t\xC3\xA9\n"));
    ASSERT_TRUE(input.root()->addItem(new PiaStr(L"own", L"mine")));
    const std::wstring expected[] = {L"12 ab", L"12.50", L"0AFF", L"\u00E9t\u00E9", L"mine"};
    const std::wstring names[] = {L"name", L"number", L"bin", L"wide", L"own"};
    const auto& items = input.root()->items;
    ASSERT_EQ(items.size(), std::size(expected));
    for (std::size_t index = 0; index < items.size(); ++index) {
        useAsText(items[index]->name, names[index]);
        useAsText(static_cast<const PiaTextItem*>(items[index])->value, expected[index]);
    }
    const auto* item = static_cast<const PiaStr*>(items.front());
    const PiaText& value = item->value;
    EXPECT_TRUE(value.front() == L'1' && value.back() == L'b' && value[1] == L'2' &&
                value.at(2) == L' ' && value.substr(3) == L"ab" && value.substr(0, 2) == L"12");
    EXPECT_TRUE(value.find(L"ab") == 3 && value.find(L'b', 1) == 4 && value.rfind(L' ') == 2 &&
                value.find(item->name) == std::wstring::npos);
    EXPECT_TRUE(value.find_first_of(L"ba") == 3 && value.find_first_not_of(L"012") == 2 &&
                value.find_last_of(std::wstring(L"1a")) == 3 && value.find_last_not_of(L"ab") == 2);
    EXPECT_TRUE(value.compare(L"2") < 0 && value.compare(0, 2, L"12") == 0 &&
                value.starts_with(L"12") && value.ends_with(L'b'));
    EXPECT_TRUE(item->name < items[1]->name && items[1]->name > value);
    double scanned = 0;
    const auto* number = static_cast<const PiaNum*>(items[1]);
    EXPECT_EQ(std::swscanf(number->value.c_str(), L"%lf", &scanned), 1);
    EXPECT_EQ(scanned, 12.5);
    EXPECT_EQ(std::stod(number->value), 12.5);
    const auto nameCopy = item->name;
    const auto valueCopy = item->value;
    input = PiaInput();
    EXPECT_EQ(nameCopy + valueCopy, L"name12 ab") << "copies own their text";
}

TEST(ItemsAsCallersWrite, ValuesAreAssigned) {
    PiaInput input;
    ASSERT_TRUE(input.openBody("a=\"one\nb=\"two\nc=3\n"));
    auto* one = static_cast<PiaStr*>(input.root()->items[0]);
    const auto* two = static_cast<const PiaStr*>(input.root()->items[1]);
    auto* number = static_cast<PiaNum*>(input.root()->items[2]);
    one->value = two->value;
    EXPECT_EQ(one->value, L"two");
    one->value = one->value.c_str() + 1;
    EXPECT_EQ(one->value, L"wo");
    one->value += L"rd";
    one->value += L's';
    one->value += one->value;
    EXPECT_EQ(one->value, L"wordswords");
    one->value = std::wstring(L"x") + number->value;
    EXPECT_EQ(one->value, L"x3");
    number->value = input.root()->items[1]->name;
    EXPECT_EQ(number->value, L"b");
    const PiaText& same = one->value;
    one->value = same;
    EXPECT_EQ(one->value, L"x3");
    one->value.clear();
    EXPECT_TRUE(one->value.empty());
    EXPECT_EQ(two->value, L"two");
}

TEST(ItemsAsCallersWrite, ItemsAreASequence) {
    PiaBlock block(L"");
    EXPECT_THROW((void)block.items.at(0), std::out_of_range);
    for (const wchar_t* name : {L"c", L"a", L"b"}) {
        ASSERT_TRUE(block.addItem(new PiaBool(name, true)));
    }
    EXPECT_EQ(block.items.at(1), block.items[1]);
    EXPECT_THROW((void)block.items.at(3), std::out_of_range);
    EXPECT_EQ(block.items.front()->name + block.items.back()->name, L"cb");
    std::wstring backwards;
    std::for_each(block.items.rbegin(), block.items.rend(),
                  [&](const PiaItem* item) { backwards += item->name; });
    EXPECT_EQ(backwards, L"bac");
    const std::vector<PiaItem*> copy(block.items.begin(), block.items.end());
    EXPECT_EQ(copy.at(2), *(block.items.end() - 1));
}

TEST(ItemsAsCallersWrite, TypesAreTheirNumbers) {
    const PiaItemType types[] = {0, 1, 2, 3, 4};
    EXPECT_TRUE(types[0] == PiaItemType::Bin && types[1] == PiaItemType::Block &&
                types[2] == PiaItemType::Bool && PiaItemType::Str == types[3] &&
                types[4] == PiaItemType::Num);
    PiaBlock block(L"");
    ASSERT_TRUE(block.addItem(new PiaNum(L"x", 1)));
    const PiaItem* item = block.findItem(L"x", 4);
    ASSERT_NE(item, nullptr);
    EXPECT_TRUE(item->type == 4 && item->type != 3 && item->type == types[4]);
    EXPECT_EQ(block.findItem(L"x", static_cast<PiaItemType>(3)), nullptr);
    const std::int32_t number = item->type;
    switch (item->type) {
        case PiaItemType::Num:
            EXPECT_EQ(number, 4);
            break;
        default:
            FAIL();
    }
}

TEST(ItemsAsCallersWrite, NumbersNeedAPrecisionUnlessTheyAreWhole) {
    static_assert(!std::is_constructible_v<PiaNum, const wchar_t*, double>);
    static_assert(!std::is_constructible_v<PiaNum, std::wstring, float>);
    EXPECT_EQ(PiaNum(L"n", -17).value, L"-17");
    EXPECT_EQ(PiaNum(L"n", std::size_t{17}).value, L"17");
    EXPECT_EQ(PiaNum(L"n", 4294967296LL).value, L"4294967296");
    EXPECT_EQ(PiaNum(L"n", short{-3}).value, L"-3");
    EXPECT_EQ(PiaNum(std::wstring(L"n"), L"1e5").value, L"1e5");
    EXPECT_EQ(PiaNum(L"n", 2, 1).value, L"2.0");
}

}  // namespace
