#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include <platen/pia.h>

namespace {

TEST(PiaBlock, NumbersAreFormattedOnceAndScannedOnRequest) {
    EXPECT_EQ(PiaNum(L"n", 0.5, 2).value, L"0.50");
    EXPECT_EQ(PiaNum(L"n", 0.5, -1).value, L"0.500000");

    const struct {
        const wchar_t* text;
        bool isInt;
        int integer;
        bool isDouble;
        double real;
    } cases[] = {
        {L"2.50", true, 2, true, 2.5},
        {L"3271557125", true, static_cast<int>(0xC3000005U), true, 3271557125.0},
        {L"4294967296", false, 0, true, 4294967296.0},
        {L"abc", false, 0, false, 0},
        {L"1e999", true, 1, false, 0},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(
            std::string(test.text, test.text + std::char_traits<wchar_t>::length(test.text)));
        PiaBlock block(L"");
        ASSERT_TRUE(block.addItem(new PiaNum(L"n", std::wstring(test.text))));
        int integer = 99;
        EXPECT_EQ(block.getInt(integer, L"n"), test.isInt);
        EXPECT_EQ(integer, test.isInt ? test.integer : 99);
        double real = 99;
        EXPECT_EQ(block.getDouble(real, L"n"), test.isDouble);
        EXPECT_EQ(real, test.isDouble ? test.real : 99);
    }
}

// A block changes from a scan to an index as it grows; names and types share the index.
TEST(PiaBlock, FindsTheSameInSmallAndLargeBlocks) {
    for (const bool inArena : {false, true}) {
        PiaTree tree;
        PiaBlock heap(L"");
        PiaBlock& block = inArena ? tree.root() : heap;
        constexpr int count = 3000;
        for (int number = 0; number < count; ++number) {
            const std::wstring name = L"n" + std::to_wstring(number);
            ASSERT_TRUE(block.addString(name, name));
            ASSERT_FALSE(block.addString(name, L"again")) << number;
            if (number % 2 == 0) {
                ASSERT_TRUE(block.addDouble(name, number));
            }
        }
        std::wstring text;
        for (int number = count; number-- > 0;) {
            const std::wstring name = L"n" + std::to_wstring(number);
            ASSERT_TRUE(block.getString(text, name));
            ASSERT_EQ(text, name);
            ASSERT_EQ(block.findItem(name, PiaItemType::Num) != nullptr, number % 2 == 0);
        }
        EXPECT_FALSE(block.getString(text, L"n3000") || block.getString(text, L"N0"));
        EXPECT_EQ(text, L"n0");
        EXPECT_EQ(block.findItem(L"n0", PiaItemType::Bin), nullptr);
        const auto refused = std::make_unique<PiaNum>(L"n0", 2);
        EXPECT_FALSE(block.addItem(refused.get()));

        block.sortItems();
        EXPECT_TRUE(block.getString(text, L"n2999"));
        EXPECT_EQ(text, L"n2999");
        EXPECT_EQ(block.items[2]->name, L"n1");
        EXPECT_EQ(block.items[3]->name, L"n10");
    }
}

TEST(PiaBlock, SortsByUtf16Units) {
    PiaTree tree;
    // U+10000 is a surrogate pair in UTF-16 and so comes before U+FF5E.
    const std::vector<std::wstring> sorted{L"",  L"A", L"B",          L"Ba",
                                           L"a", L"é", L"\U00010000", L"～"};
    for (auto name = sorted.rbegin(); name != sorted.rend(); ++name) {
        ASSERT_NE(tree.root().addBlock(*name), nullptr);
    }
    tree.root().sortItems();
    for (std::size_t index = 0; index < sorted.size(); ++index) {
        EXPECT_EQ(tree.root().items[index]->name, sorted[index]) << index;
    }
}

TEST(PiaBlock, ForgetsWhatIsRemoved) {
    // Few items are looked for one by one, many in an index.
    for (const int count : {3, 100}) {
        PiaTree tree;
        PiaBlock& root = tree.root();
        for (int number = 0; number < count; ++number) {
            ASSERT_TRUE(root.addString(std::to_wstring(number), L"x"));
        }
        auto* deep = root.addBlock(L"1");
        ASSERT_TRUE(deep->addItem(new PiaStr(L"heap", std::wstring(100, L'y'))));
        ASSERT_NE(root.findItem(std::to_wstring(count - 1), PiaItemType::Str), nullptr);
        EXPECT_FALSE(root.removeItem(deep->items[0]));
        EXPECT_TRUE(root.removeItem(root.findItem(L"1", PiaItemType::Str)));
        EXPECT_TRUE(root.removeItem(deep));
        EXPECT_EQ(root.findItem(L"1", PiaItemType::Str), nullptr);
        EXPECT_EQ(root.findItem(L"1", PiaItemType::Block), nullptr);
        EXPECT_EQ(root.findItem(L"2", PiaItemType::Str), root.items[1]);
        ASSERT_TRUE(root.addString(std::wstring(L"1"), L"again"));
        EXPECT_EQ(root.findItem(L"1", PiaItemType::Str), root.items[root.items.size() - 1]);
        EXPECT_EQ(root.items.size(), static_cast<std::size_t>(count));
    }
}

// With recursion on depth this would end the stack.
TEST(PiaBlock, IsDestroyedAtAnyDepth) {
    auto root = std::make_unique<PiaBlock>(L"");
    PiaBlock* inner = root.get();
    for (int depth = 0; depth < 1000000; ++depth) {
        auto* child = new PiaBlock(L"b");
        ASSERT_TRUE(inner->addItem(child));
        inner = child;
    }
    ASSERT_TRUE(inner->addItem(new PiaBool(L"deep", true)));
    root.reset();
}

TEST(PiaTree, OwnsHeapItemsAmongItsOwnAndMoves) {
    PiaTree tree;
    ASSERT_TRUE(tree.root().addItem(new PiaBin(L"heap", std::wstring(100, L'x'))));
    PiaBlock* block = tree.root().addBlock(L"block");
    ASSERT_NE(block, nullptr);
    ASSERT_TRUE(block->addString(L"long", std::wstring(100, L'y')));
    PiaTree other = std::move(tree);
    tree = std::move(other);
    std::wstring text;
    EXPECT_TRUE(static_cast<PiaBlock*>(tree.root().findItem(L"block", PiaItemType::Block))
                    ->getString(text, L"long"));
    EXPECT_EQ(text, std::wstring(100, L'y'));
}

}  // namespace
