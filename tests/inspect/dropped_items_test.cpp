#include <gtest/gtest.h>

#include <platen/inspect.h>
#include <platen/utcore.h>

namespace {

std::string dropped(const std::string& before, const std::string& after) {
    PiaInput one;
    PiaInput other;
    EXPECT_TRUE(one.openBody(before) && other.openBody(after));
    std::string text;
    for (const std::wstring& path : platen::droppedItems(*one.root(), *other.root())) {
        text += ut::encodeUtf8(path) + ' ';
    }
    return text;
}

TEST(DroppedItems, AreNamedByTheirPath) {
    EXPECT_EQ(dropped("", "a=1\n"), "");
    EXPECT_EQ(dropped("a=1\nb{\nc=\"x\n}\n", "b{\nc=\"y\nd=1\n}\na=2\n"), "");
    EXPECT_EQ(dropped("a=1\na=\"x\nb{\nc{\nd=1\ne=2\n}\nf=TRUE\n}\n", "a=\"x\nb{\nc{\ne=1\n}\n}\n"),
              "a b/c/d b/f ");
    // A block goes with all that is in it; an item of another type is another item.
    EXPECT_EQ(dropped("b{\nc{\nd=1\n}\n}\ne=1\n", "b=1\ne=\"1\n"), "b e ");
}

TEST(DroppedItems, PropertiesAreToldApartByTheirNames) {
    const auto list = [](const std::string& properties) {
        return "custom{\n" + properties + "}\n";
    };
    const std::string before =
        list("0{\nname=\"A\nvalue=1\n}\n1{\nNAME=\"B\nvalue=TRUE\n}\n2{\nname=\"C\nvalue=\"x\n}\n");
    EXPECT_EQ(dropped(before, list("0{\nname=\"C\nvalue=\"y\n}\n1{\nname=\"A\nvalue=2\n}\n"
                                   "2{\nname=\"B\nvalue=FALSE\n}\n")),
              "");
    // The same numbers, other properties: a value of another type is one.
    EXPECT_EQ(dropped(before, list("0{\nname=\"a\nvalue=1\n}\n1{\nNAME=\"B\nvalue=1\n}\n"
                                   "2{\nname=\"C\nvalue=\"x\n}\n")),
              "custom/0 (A) custom/1 (B) ");
    // Entries that are no properties and lists elsewhere go by their numbers.
    EXPECT_EQ(
        dropped(list("0{\nname=\"A\n}\n1{\nx=\"A\nvalue=1\n}\n"), list("1{\nx=\"A\nvalue=1\n}\n")),
        "custom/0 ");
    const std::string inner = "0{\nname=\"A\nvalue=1\n}\n";
    EXPECT_EQ(
        dropped("b{\n" + list(inner) + "}\n", "b{\n" + list("1{\nname=\"A\nvalue=1\n}\n") + "}\n"),
        "b/custom/0 ");
}

TEST(DroppedItems, AreBoundedInNumberAndDepth) {
    std::string many;
    for (std::size_t number = 0; number < 2 * platen::mostDroppedItems; ++number) {
        many += 'n' + std::to_string(number) + "=1\n";
    }
    PiaInput wide;
    ASSERT_TRUE(wide.openBody(many));
    EXPECT_EQ(platen::droppedItems(*wide.root(), PiaBlock(L"")).size(), platen::mostDroppedItems);

    constexpr int depth = 200000;
    PiaTree one;
    PiaTree other;
    PiaBlock* inner = &one.root();
    PiaBlock* otherInner = &other.root();
    for (int level = 0; level < depth; ++level) {
        inner = inner->addBlock(L"b");
        otherInner = otherInner->addBlock(L"b");
    }
    ASSERT_TRUE(inner->addInt(L"last", 1));
    const auto paths = platen::droppedItems(one.root(), other.root());
    ASSERT_EQ(paths.size(), 1u);
    EXPECT_TRUE(paths[0].ends_with(L"b/b/last"));
}

}  // namespace
