#include "tools/platen/parameters_rules.h"

#include <algorithm>
#include <string>

#include "tools/platen/lost_rules.h"
#include "tools/platen/paper_rules.h"

namespace platen {
namespace {

constexpr Rule unknownDefault{"default-paper-unknown",
                              "the paper to begin with is in no list, and has no size",
                              "name a paper of the size list"};

bool lists(const PmpSizeNode& sizes, const std::wstring& name) {
    return std::any_of(sizes.papers.begin(), sizes.papers.end(),
                       [&](const auto& size) { return size.name == name; });
}

}  // namespace

void checkParameters(const PiaInput& input, const PlotModelParam& parameters,
                     FindingList& findings) {
    const ModNode::MediaNode& device = parameters.mod.media;
    const UdmNode::MediaNode* user = parameters.udm.media.get();
    const PaperLimits limits{device.sizeMaxX, device.sizeMaxY};
    addLost(lostItems(*input.root(), parameters, input.report()), findings);
    if (device.size) {
        const PmpDescriptionNode none;
        checkPaperLists(input, L"mod/media", *device.size,
                        device.description ? *device.description : none, limits, findings);
    }
    if (user != nullptr) {
        checkPaperLists(input, L"udm/media", user->size, user->description, limits, findings);
    }
    const bool known = device.defaultSize.empty() ||
                       (device.size && lists(*device.size, device.defaultSize)) ||
                       (user != nullptr && lists(user->size, device.defaultSize));
    if (!known) {
        findings.add({.rule = unknownDefault,
                      .path = L"mod/media/default_size",
                      .found = device.defaultSize});
    }
}

}  // namespace platen
