#include <algorithm>
#include <bitset>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include <platen/pia.h>
#include <platen/plotstyle.h>
#include <platen/utcore.h>
#include "plotstyle/entry_names.h"
#include "plotstyle/index_name.h"
#include "plotstyle/style_taker.h"
#include "plotstyle/table_keys.h"

namespace {

bool fail(PiaReport& report, PiaCode code, const PiaItem& place, std::wstring path,
          std::wstring expected, std::wstring_view found) {
    PiaFinding finding;
    finding.code = code;
    finding.line = node_keys::known(place.line());
    finding.path = std::move(path);
    finding.expected = std::move(expected);
    finding.found = found;
    return report.fail(std::move(finding));
}

/// A block whose children are named by numbers from 0.
class NumberedBlock {
public:
    /// `count` is the number of places; all children are of `type`, in words `typeName`.
    NumberedBlock(const PiaBlock& block, std::size_t count, PiaItemType type,
                  const wchar_t* typeName, PiaReport& report)
        : path_{.parent = nullptr, .name = block.name},
          block_(block),
          count_(count),
          type_(type),
          typeName_(typeName),
          report_(report) {}

    const PiaPath& path() const { return path_; }

    bool isFull() const {
        return block_.items.size() == count_ ||
               fail(report_, PiaCode::CountWrong, block_, path_.join({}), std::to_wstring(count_),
                    std::to_wstring(block_.items.size()));
    }

    /// Takes the place of a child; false unless it has the type and its name is a number in range.
    bool placeOf(const PiaItem& item, std::size_t& place) const {
        if (item.type != type_) {
            return fail(report_, PiaCode::ValueInvalid, item, path_.join(item.name), typeName_, {});
        }
        return plot_style::parseIndex(item.name, count_, place) ||
               fail(report_, PiaCode::IndexInvalid, item, path_.join(item.name),
                    L"a number below " + std::to_wstring(count_), item.name);
    }

    /// Two names can spell one number: "1" and "01".
    bool failTaken(const PiaItem& item) const {
        return fail(report_, PiaCode::IndexInvalid, item, path_.join(item.name),
                    L"a number not used yet", item.name);
    }

private:
    PiaPath path_;
    const PiaBlock& block_;
    std::size_t count_;
    PiaItemType type_;
    const wchar_t* typeName_;
    PiaReport& report_;
};

const PiaBlock* findBlock(const PiaBlock& root, PiaKey key) {
    return static_cast<const PiaBlock*>(root.findItem(key.text(), PiaItemType::Block));
}

}  // namespace

/// Fills a new table; after a failure it is of no use.
struct CPlotStyleTable::Reader {
    CPlotStyleTable& table;
    PiaReport& report;

    bool read(const PiaBlock& root, plot_style::StyleTaker& styles);
    bool readStyles(const PiaBlock& block, plot_style::StyleTaker& styles);
    bool readAci(const PiaBlock& block);
    /// Gives entry i style i of `list`, as a table without an "aci_table" block means it.
    bool readAciByPosition(const PiaBlock& list);
    bool readLineWeights(const PiaBlock& block);
};

CPlotStyleTable* CPlotStyleTable::read(const wchar_t* path, PiaReport* report) {
    PiaInput input;
    auto table = std::make_unique<CPlotStyleTable>();
    plot_style::StyleTaker styles(table->styleMemory());
    const bool done =
        styles.open(input, path) && Reader{*table, input.report()}.read(*input.root(), styles);
    if (report != nullptr) {
        *report = std::move(input.report());
    }
    return done ? table.release() : nullptr;
}

bool CPlotStyleTable::init(PiaInput& input) {
    const PiaBlock* root = input.root();
    if (root == nullptr) {
        return input.report().fail({.code = PiaCode::FileUnreadable, .expected = L"an open file"});
    }
    CPlotStyleTable fresh;
    plot_style::StyleTaker styles(fresh.styleMemory());
    styles.takeAll(*root);
    if (!Reader{fresh, input.report()}.read(*root, styles)) {
        return false;
    }
    swap(fresh);
    return true;
}

bool CPlotStyleTable::initAci(const PiaBlock& block) {
    PiaReport unread;
    return Reader{*this, unread}.readAci(block);
}

bool CPlotStyleTable::initCLW(const PiaBlock& block) {
    PiaReport unread;
    return Reader{*this, unread}.readLineWeights(block);
}

bool CPlotStyleTable::Reader::read(const PiaBlock& root, plot_style::StyleTaker& styles) {
    if (!node_keys::read(root, table, {}, report)) {
        return false;
    }
    const PiaBlock* list = findBlock(root, PlotStyleTableKeys::styles);
    if (list == nullptr) {
        return fail(report, PiaCode::KeyMissing, root,
                    std::wstring(PlotStyleTableKeys::styles.text()), L"a block", {});
    }
    if (!readStyles(*list, styles)) {
        return false;
    }
    if (table.aciAvailable_) {
        const PiaBlock* aci = findBlock(root, PlotStyleTableKeys::aciTable);
        if (aci != nullptr ? !readAci(*aci) : !readAciByPosition(*list)) {
            return false;
        }
    }
    const PiaBlock* weights = findBlock(root, PlotStyleTableKeys::lineWeights);
    return weights == nullptr || readLineWeights(*weights);
}

bool CPlotStyleTable::Reader::readStyles(const PiaBlock& block, plot_style::StyleTaker& styles) {
    const NumberedBlock list(block, block.items.size(), PiaItemType::Block, L"a block", report);
    table.styles_.resize(block.items.size());
    for (const PiaItem* item : block.items) {
        std::size_t place = 0;
        if (!list.placeOf(*item, place)) {
            return false;
        }
        if (table.styles_[place]) {
            return list.failTaken(*item);
        }
        table.styles_[place] = styles.next(report);
        if (!table.styles_[place]) {
            return false;
        }
    }
    return true;
}

bool CPlotStyleTable::Reader::readAci(const PiaBlock& block) {
    const NumberedBlock entries(block, CAciTable::count, PiaItemType::Str, L"a text", report);
    if (!entries.isFull()) {
        return false;
    }
    plot_style::EntryNames names;
    std::bitset<CAciTable::count> taken;
    for (const PiaItem* item : block.items) {
        std::size_t place = 0;
        if (!entries.placeOf(*item, place)) {
            return false;
        }
        if (taken[place]) {
            return entries.failTaken(*item);
        }
        taken.set(place);
        names.set(place, static_cast<const PiaStr*>(item)->value);
    }

    auto aci = std::make_unique<CAciTable>();
    for (auto style = table.styles_.begin(); style != table.styles_.end() && names.waiting() > 0;
         ++style) {
        names.offer((*style)->name(),
                    [&](std::size_t entry) { aci->styles_[entry] = style->get(); });
    }
    if (names.waiting() > 0) {
        const auto* nameless =
            std::find_if(block.items.begin(), block.items.end(), [&](const PiaItem* item) {
                std::size_t place = 0;
                return entries.placeOf(*item, place) && aci->at(place) == nullptr;
            });
        return fail(report, PiaCode::StyleUnknown, **nameless,
                    entries.path().join((*nameless)->name), L"the name of a style",
                    static_cast<const PiaStr*>(*nameless)->value.str());
    }
    table.aci_ = std::move(aci);
    table.usesAci_ = true;
    return true;
}

bool CPlotStyleTable::Reader::readAciByPosition(const PiaBlock& list) {
    if (table.styles_.size() != CAciTable::count) {
        return fail(report, PiaCode::CountWrong, list,
                    std::wstring(PlotStyleTableKeys::styles.text()),
                    std::to_wstring(CAciTable::count) + L", as there is no " +
                        PlotStyleTableKeys::aciTable.c_str(),
                    std::to_wstring(table.styles_.size()));
    }
    table.aci_ = std::make_unique<CAciTable>();
    std::transform(table.styles_.begin(), table.styles_.end(), table.aci_->styles_.begin(),
                   [](const auto& style) { return style.get(); });
    return true;
}

bool CPlotStyleTable::Reader::readLineWeights(const PiaBlock& block) {
    const NumberedBlock weights(block, CCustomLineweightTable::count, PiaItemType::Num, L"a number",
                                report);
    if (!weights.isFull()) {
        return false;
    }
    CCustomLineweightTable read;
    for (const PiaItem* item : block.items) {
        std::size_t place = 0;
        if (!weights.placeOf(*item, place)) {
            return false;
        }
        const std::wstring text = static_cast<const PiaNum*>(item)->value;
        if (!ut::scanDouble(text, read[place])) {
            return fail(report, PiaCode::ValueInvalid, *item, weights.path().join(item->name),
                        L"a number", text);
        }
    }
    table.customLineweights_ = read;
    return true;
}
