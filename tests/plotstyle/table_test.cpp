#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <memory>
#include <numeric>
#include <string>
#include <utility>

#include <platen/pia.h>
#include <platen/plotstyle.h>

namespace {

using TablePtr = std::unique_ptr<CPlotStyleTable>;

TablePtr colorTable() { return TablePtr(CPlotStyleTable::create(true, L"colours")); }

/// A named table of the styles "Normal", "Thin Line" and "Thick Line".
TablePtr namedTable() {
    TablePtr table(CPlotStyleTable::create(false, nullptr));
    EXPECT_TRUE(table->addStyle(L"Thin Line", -1, nullptr));
    EXPECT_TRUE(table->addStyle(L"Thick Line", 1, nullptr));
    return table;
}

std::wstring namesOf(const CPlotStyleTable& table) {
    std::wstring names;
    for (std::size_t index = 0; index < table.size(); ++index) {
        names += (index == 0 ? L"" : L" ") + table.style(index)->name();
    }
    return names;
}

/// Every entry of the ACI table points to a style of its own table, `indexOf(entry)`.
template <class IndexOf>
void expectAci(const CPlotStyleTable& table, IndexOf indexOf) {
    ASSERT_NE(table.ACI(), nullptr);
    for (std::size_t entry = 0; entry < CAciTable::count; ++entry) {
        ASSERT_EQ(table.ACI()->at(entry), table.style(indexOf(entry))) << entry;
    }
}

std::size_t same(std::size_t entry) { return entry; }

TEST(PlotStyleTable, CreatedTables) {
    const TablePtr colors = colorTable();
    EXPECT_TRUE(colors->hasACI() && colors->useACI());
    EXPECT_EQ(colors->description(), L"colours");
    ASSERT_EQ(colors->size(), 255U);
    EXPECT_EQ(colors->style(0)->locName(), L"Color 1");
    EXPECT_EQ(colors->style(254)->name(), L"Color_255");
    EXPECT_EQ(colors->style(255), nullptr);
    expectAci(*colors, same);
    EXPECT_EQ(colors->ACI()->at(255), nullptr);
    EXPECT_FALSE(colors->addStyle(L"more", -1, nullptr));
    colors->deleteStyle(0);
    EXPECT_FALSE(colors->deleteACI());
    EXPECT_EQ(colors->size(), 255U);

    const TablePtr named(CPlotStyleTable::create(false, nullptr));
    EXPECT_FALSE(named->hasACI() || named->useACI());
    EXPECT_EQ(named->ACI(), nullptr);
    EXPECT_EQ(namesOf(*named), L"Normal");
}

TEST(PlotStyleTable, FindIgnoresCase) {
    const TablePtr table = namedTable();
    EXPECT_EQ(table->find(L"THIN_line"), table->style(1));
    EXPECT_EQ(table->find(L"thin line"), nullptr);
    EXPECT_EQ(table->find(nullptr), nullptr);
    EXPECT_EQ(table->findLocName(L"thick LINE"), 2);
    EXPECT_EQ(table->findLocName(L"Thick_Line"), -1);
    EXPECT_EQ(table->findLocName(nullptr), -1);
}

TEST(PlotStyleTable, AddedStyles) {
    struct Case {
        const wchar_t* name;
        int after;
        bool added;
        std::wstring names;
    };
    const std::wstring before = L"Normal Thin_Line Thick_Line";
    for (const Case& c :
         {Case{L"New One", 0, true, L"Normal New_One Thin_Line Thick_Line"},
          Case{L"New", 2, true, before + L" New"}, Case{L"New", -1, true, before + L" New"},
          Case{L"New", -7, true, before + L" New"}, Case{L"New", 3, false, before},
          Case{L"", 0, false, before}, Case{nullptr, 0, false, before},
          Case{L"thin LINE", 0, false, before},
          // Only localized names have to differ.
          Case{L"Thin_Line", -1, true, before + L" Thin_Line"}}) {
        const TablePtr table = namedTable();
        table->style(0)->setScreen(33);
        EXPECT_EQ(table->addStyle(c.name, c.after, table->style(0)), c.added);
        EXPECT_EQ(namesOf(*table), c.names);
        const int added = table->findLocName(c.name);
        EXPECT_EQ(c.added,
                  added >= 0 && table->style(static_cast<std::size_t>(added))->screen() == 33);
    }
    CPlotStyleTable empty;
    EXPECT_FALSE(empty.addStyle(L"New", 0, nullptr));
    EXPECT_TRUE(empty.addStyle(L"New", -1, nullptr));
}

TEST(PlotStyleTable, RenamedAndDeletedStyles) {
    const struct {
        int index;
        const wchar_t* name;
        bool renamed;
    } cases[] = {{1, L"Fine Line", true}, {1, L"THIN line", true},
                 {1, L"normal", false},   {1, L"", false},
                 {1, nullptr, false},     {-1, L"New", false},
                 {3, L"New", false},      {std::numeric_limits<int>::max(), L"New", false}};
    for (const auto& [index, name, renamed] : cases) {
        const TablePtr table = namedTable();
        EXPECT_EQ(table->renameStyle(index, name), renamed) << index;
        EXPECT_EQ(table->style(1)->locName(), renamed ? name : L"Thin Line");
    }
    const TablePtr table = namedTable();
    for (const int index : {1, -1, 2, std::numeric_limits<int>::min()}) {
        table->deleteStyle(index);
    }
    EXPECT_EQ(namesOf(*table), L"Normal Thick_Line");
}

TEST(PlotStyleTable, AciOfANamedTable) {
    const TablePtr table = namedTable();
    std::array<int, CAciTable::count> indices{};
    for (const int wrong : {3, 4, -1}) {
        indices[7] = wrong;
        table->addACI(indices.data());
        EXPECT_FALSE(table->hasACI()) << wrong << " is out of range";
    }
    std::iota(indices.begin(), indices.end(), 0);
    for (int& index : indices) {
        index %= 3;
    }
    table->addACI(indices.data());
    EXPECT_TRUE(table->hasACI());
    EXPECT_FALSE(table->useACI());
    expectAci(*table, [](std::size_t entry) { return entry % 3; });
    EXPECT_FALSE(table->addStyle(L"New", -1, nullptr));
    table->deleteStyle(0);
    EXPECT_EQ(table->size(), 3U);

    EXPECT_TRUE(table->deleteACI());
    EXPECT_FALSE(table->hasACI());
    EXPECT_EQ(table->ACI(), nullptr);
    EXPECT_FALSE(table->deleteACI());

    const TablePtr colors = colorTable();
    colors->addACI(indices.data());
    expectAci(*colors, same);
}

TEST(PlotStyleTable, NoEntryOutlivesItsStyle) {
    const TablePtr table = namedTable();
    PiaBlock entries(L"aci_table");
    for (int entry = 0; entry < 255; ++entry) {
        ASSERT_TRUE(
            entries.addString(std::to_wstring(entry), entry % 2 == 0 ? L"thin_line" : L"NORMAL"));
    }
    ASSERT_TRUE(table->initAci(entries));
    EXPECT_TRUE(table->useACI());
    table->deleteStyle(1);
    EXPECT_EQ(table->ACI()->at(0), nullptr);
    EXPECT_EQ(table->ACI()->at(1), table->style(0));
    EXPECT_FALSE(table->initAci(entries));
    const CPlotStyleTable copy = *table;
    EXPECT_EQ(copy.ACI()->at(0), nullptr);
    EXPECT_EQ(copy.ACI()->at(1), copy.style(0));
}

TEST(PlotStyleTable, CopiesStandAlone) {
    TablePtr original = colorTable();
    original->style(9)->setScreen(10);
    original->setScaleFactor(3.0);
    original->customLineweights()[0] = 9.0;
    CPlotStyleTable copy = *original;
    CPlotStyleTable assigned;
    assigned = copy;
    original.reset();
    expectAci(copy, same);
    expectAci(assigned, same);
    EXPECT_TRUE(assigned.style(9)->screen() == 10 && assigned.scaleFactor() == 3.0 &&
                assigned.customLineweights()[0] == 9.0 && assigned.useACI());

    CPlotStyleTable& self = copy;
    copy = self;
    expectAci(copy, same);
    copy = std::move(self);
    expectAci(copy, same);

    CPlotStyleTable moved(std::move(copy));
    expectAci(moved, same);
    // NOLINTBEGIN(bugprone-use-after-move,clang-analyzer-cplusplus.Move): it is empty by promise.
    EXPECT_EQ(copy.size(), 0U);
    EXPECT_FALSE(copy.hasACI() || copy.useACI());
    EXPECT_TRUE(copy.addStyle(L"New", -1, nullptr));
    // NOLINTEND(bugprone-use-after-move,clang-analyzer-cplusplus.Move)
    copy = std::move(moved);
    expectAci(copy, same);
}

TEST(ColorToNamed, DistinctSettingsBecomeStyles) {
    struct Case {
        const char* what;
        /// Sets the style of a colour, from 0.
        void (*change)(CPlotStyle& style, int color);
        const wchar_t* prefix;
        std::size_t size;
        std::wstring last;
        /// Position of the style of a colour.
        int (*position)(int color);
    };
    const Case cases[] = {
        {"all alike", [](CPlotStyle&, int) {}, nullptr, 2, L"Style 1", [](int) { return 1; }},
        {"alike but for the description",
         [](CPlotStyle& style, int color) { style.setDesc(std::to_wstring(color)); }, L"Pen", 2,
         L"Pen 1", [](int) { return 1; }},
        {"all different", [](CPlotStyle& style, int color) { style.setPen(color); }, L"Pen", 256,
         L"Pen 255", [](int color) { return color + 1; }},
        {"in turns",
         [](CPlotStyle& style, int color) { style.setAdaptiveLinetype(color % 3 == 1); }, L"A\tb",
         3, L"A\tb 2", [](int color) { return color % 3 == 1 ? 2 : 1; }},
    };
    for (const Case& c : cases) {
        const TablePtr source = colorTable();
        for (int color = 0; color < 255; ++color) {
            c.change(*source->style(static_cast<std::size_t>(color)), color);
        }
        const TablePtr table(ctb2stb(*source, c.prefix));
        ASSERT_TRUE(table) << c.what;
        ASSERT_EQ(table->size(), c.size) << c.what;
        EXPECT_EQ(table->style(0)->name(), L"Normal");
        EXPECT_EQ(table->style(c.size - 1)->locName(), c.last) << c.what;
        EXPECT_TRUE(table->hasACI());
        EXPECT_FALSE(table->useACI());
        expectAci(*table, [&](std::size_t entry) {
            return static_cast<std::size_t>(c.position(static_cast<int>(entry)));
        });
        for (std::size_t entry = 0; entry < CAciTable::count; ++entry) {
            ASSERT_TRUE(table->ACI()->at(entry)->isEqual(*source->style(entry), false)) << c.what;
        }
    }

    const TablePtr source = colorTable();
    source->setScaleFactor(0.5);
    source->setApplyFactor(true);
    source->setCustomLineweightDisplayUnits(1);
    source->customLineweights()[26] = 7.0;
    const TablePtr table(ctb2stb(*source, L"Pen"));
    EXPECT_EQ(table->style(1)->name(), L"Pen_1");
    EXPECT_EQ(table->description(), L"colours");
    EXPECT_TRUE(table->scaleFactor() == 0.5 && table->applyFactor() &&
                table->customLineweightDisplayUnits() == 1 &&
                table->customLineweights()[26] == 7.0);
    EXPECT_EQ(ctb2stb(*table, nullptr), nullptr) << "a named table";
}

}  // namespace
