#include <algorithm>
#include <array>
#include <cstddef>
#include <initializer_list>
#include <string_view>
#include <utility>

#include <platen/inspect.h>
#include "plotcfg/named_pmp.h"
#include "plotstyle/table_keys.h"

namespace platen {
namespace {

struct KindEntry {
    const char* word;
    const char* name;
};

constexpr std::array<KindEntry, 5> kinds{{
    {"ctb", "colour-dependent plot style table"},
    {"stb", "named plot style table"},
    {"pc3", "plot configuration"},
    {"pmp", "plot model parameters"},
    {"pia", "container of an unknown document"},
}};

bool hasBlocks(const PiaBlock& root, std::initializer_list<std::wstring_view> names) {
    return std::all_of(names.begin(), names.end(), [&](std::wstring_view name) {
        return root.findItem(name, PiaItemType::Block) != nullptr;
    });
}

/// The header's letters decide. Without them a table with a colour index may be either: one made
/// from a colour table by `ctb2stb` keeps an index too, but its styles are shared by colours.
FileKind tableKind(const PiaInput& input, const CPlotStyleTable* table) {
    const std::optional<PiaKind> header = input.container().kind;
    if (header && *header != PiaKind::Pc3) {
        return *header == PiaKind::Ctb ? FileKind::Ctb : FileKind::Stb;
    }
    if (table != nullptr) {
        return hasStylePerColour(*table) ? FileKind::Ctb : FileKind::Stb;
    }
    const auto* available = static_cast<const PiaBool*>(
        input.root()->findItem(L"aci_table_available", PiaItemType::Bool));
    return available != nullptr && available->value ? FileKind::Ctb : FileKind::Stb;
}

FileKind configurationKind(const PiaInput& input) {
    const PiaBlock& root = *input.root();
    if (input.container().kind.value_or(PiaKind::Pc3) == PiaKind::Pc3) {
        if (hasBlocks(root, {L"meta", L"media"})) {
            return FileKind::Pc3;
        }
        if (hasBlocks(root, {L"meta", L"mod", L"udm"})) {
            return FileKind::Pmp;
        }
    }
    return FileKind::Pia;
}

void attachNamedPmp(const std::wstring& file, const PiaReadOptions& options, Content& content) {
    CPlotCfg3& config = *content.config;
    const std::wstring name = config.meta.userDefinedModelPathname;
    if (name.empty() || file.empty()) {
        return;
    }
    plot_config::NamedPmp found = plot_config::readNamedPmp(name, file, options);
    if (found.document) {
        config.attachPMP(found.document.release());
        config.meta.userDefinedModelPathname = name;
    }
    content.pmpPath = std::move(found.path);
    content.pmpReport = std::move(found.report);
}

}  // namespace

const char* kindWord(FileKind kind) { return kinds[static_cast<std::size_t>(kind)].word; }
const char* kindName(FileKind kind) { return kinds[static_cast<std::size_t>(kind)].name; }

const char* headerLetters(PiaKind kind) {
    constexpr std::array<const char*, 3> letters{"CTB", "STB", "PC3"};
    return letters[static_cast<std::size_t>(kind)];
}

Content recognise(PiaInput& input) {
    Content content;
    if (!hasBlocks(*input.root(), {PlotStyleTableKeys::styles.text()})) {
        content.kind = configurationKind(input);
        return content;
    }
    auto table = std::make_unique<CPlotStyleTable>();
    content.rejected = !table->init(input);
    if (!content.rejected) {
        content.table = std::move(table);
    }
    content.kind = tableKind(input, content.table.get());
    return content;
}

Content readContent(PiaInput& input, const std::wstring& file, const PiaReadOptions& options) {
    Content content = recognise(input);
    if (content.kind == FileKind::Pc3) {
        bool printerChanged = false;
        content.config = CPlotCfg3::fromInput(input, printerChanged);
        content.rejected = !content.config;
        if (content.config) {
            attachNamedPmp(file, options, content);
        }
    } else if (content.kind == FileKind::Pmp) {
        auto parameters = std::make_unique<PlotModelParam>();
        content.rejected = !parameters->init(input);
        if (!content.rejected) {
            content.parameters = std::move(parameters);
        }
    }
    return content;
}

std::vector<int> colorsOf(const CPlotStyleTable& table, const CPlotStyle& style) {
    std::vector<int> colours;
    for (std::size_t index = 0; table.ACI() != nullptr && index < CAciTable::count; ++index) {
        if (table.ACI()->at(index) == &style) {
            colours.push_back(static_cast<int>(index) + 1);
        }
    }
    return colours;
}

bool hasStylePerColour(const CPlotStyleTable& table) {
    if (table.ACI() == nullptr || table.size() != CAciTable::count) {
        return false;
    }
    for (std::size_t index = 0; index < CAciTable::count; ++index) {
        if (table.ACI()->at(index) != table.style(index)) {
            return false;
        }
    }
    return true;
}

}  // namespace platen
