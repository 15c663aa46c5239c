#include "inspect/parameters_rules.h"

#include <algorithm>
#include <string>

#include "inspect/lost_rules.h"
#include "inspect/paper_rules.h"

namespace platen {
namespace {

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
        findings.warn({.code = PiaCode::DefaultPaperUnknown,
                       .path = L"mod/media/default_size",
                       .found = device.defaultSize});
    }
}

}  // namespace platen
