#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include <platen/plotcfg.h>
#include <platen/pmp.h>
#include <platen/utcore.h>
#include "edit/repair_documents.h"
#include "plotcfg/document_keys.h"
#include "plotcfg/named_pmp.h"
#include "pmp/pmp_keys.h"

namespace platen {
namespace {

/// The block at names joined by "/", or null.
PiaBlock* blockAt(PiaBlock& root, std::wstring_view path) {
    PiaBlock* block = &root;
    while (block != nullptr && !path.empty()) {
        const std::size_t end = std::min(path.find(L'/'), path.size());
        block = blockIn(*block, path.substr(0, end));
        path.remove_prefix(std::min(end + 1, path.size()));
    }
    return block;
}

/// Each property is a block of a name and a value; one that is not costs readers all of them.
void mendProperties(PiaBlock& custom, TreeRepair& repair) {
    constexpr std::size_t mostProperties = 20000;
    if (custom.items.size() > mostProperties) {
        return;
    }
    for (std::size_t index = 0; index < custom.items.size();) {
        PiaItem* item = custom.items[index];
        if (item->type == PiaItemType::Block) {
            const auto& property = static_cast<const PiaBlock&>(*item);
            const bool isWhole = property.items.size() == 2 &&
                                 property.items[0]->type == PiaItemType::Str &&
                                 ut::equalNoCase(property.items[0]->name.view(), L"name") &&
                                 property.items[1]->type != PiaItemType::Block;
            if (!isWhole) {
                repair.drop(custom, item, joined(L"custom", item->name));
                continue;
            }
        }
        ++index;
    }
}

template <class Node>
void mendOptional(PiaBlock& root, const std::wstring& path, TreeRepair& repair) {
    if (PiaBlock* block = blockAt(root, path)) {
        repair.mendNode<Node>(*block, path);
    }
}

void mendPapers(PiaBlock& root, const std::wstring& path, TreeRepair& repair) {
    const std::wstring sizes = joined(path, L"size");
    const std::wstring descriptions = joined(path, L"description");
    repair.mendEntries<PmpSizeNode::PaperSize>(blockAt(root, sizes), sizes);
    repair.mendEntries<PmpDescriptionNode::PaperSizeDescription>(blockAt(root, descriptions),
                                                                 descriptions);
}

}  // namespace

void mendConfiguration(PiaBlock& root, TreeRepair& repair) {
    repair.mendBlock<CMetaNode>(root, L"meta");
    repair.mendBlock<CMediaNode>(root, L"media");
    repair.mendBlock<CIoNode>(root, L"io");
    repair.mendBlock<CResColorMemNode>(root, L"res_color_mem");
    mendOptional<CMediaNode::CDestinationNode>(root, L"media/destination", repair);
    const std::wstring papers = L"media/custom_papers";
    repair.mendEntries<CustomPaperSize>(blockAt(root, papers), papers);
    if (PiaBlock* custom = blockIn(root, L"custom")) {
        mendProperties(*custom, repair);
    }
}

void mendParameters(PiaBlock& root, TreeRepair& repair) {
    repair.mendBlock<CMetaNode>(root, L"meta");
    repair.mendBlock<ModNode>(root, L"mod");
    repair.mendBlock<UdmNode>(root, L"udm");
    mendOptional<UdmNode::MediaNode>(root, L"udm/media", repair);
    mendOptional<HiddenNode>(root, L"hidden", repair);
    mendPapers(root, L"mod/media", repair);
    mendPapers(root, L"udm/media", repair);
    mendPapers(root, L"hidden/media", repair);
}

void mendPmpName(PiaBlock& root, const std::wstring& file, TreeRepair& repair) {
    PiaBlock* meta = blockIn(root, L"meta");
    auto* name = meta == nullptr ? nullptr
                                 : static_cast<PiaStr*>(meta->findItem(
                                       L"user_defined_model_pathname", PiaItemType::Str));
    if (name == nullptr || file.empty()) {
        return;
    }
    const std::wstring named = name->value.str();
    if (!named.empty() && !plot_config::readNamedPmp(named, file).path.empty()) {
        return;
    }
    const auto take = [&](RepairCode code, const std::wstring& taken) {
        repair.assume(code, *name, L"meta/user_defined_model_pathname", named, taken);
        name->value = taken;
    };
    // A PMP made for a configuration has its name, and its meta block.
    const std::wstring own = ut::withExtension(ut::fileNameOf(file), L"pmp");
    const plot_config::NamedPmp other = plot_config::readNamedPmp(own, file);
    std::wstring driver;
    std::wstring model;
    static_cast<void>(meta->getString(driver, L"driver_pathname"));
    static_cast<void>(meta->getString(model, L"canonical_model_name"));
    if (other.document && other.document->driverPathname == driver &&
        other.document->canonicalModelName == model) {
        take(RepairCode::PmpOther, other.path);
    } else if (!named.empty()) {
        take(RepairCode::PmpDetached, {});
        repair.notes().lose({.unit = Loss::Unit::Items,
                             .path = L"meta/user_defined_model_pathname",
                             .text = L"the papers and limits that were in " + named});
    }
}

}  // namespace platen
