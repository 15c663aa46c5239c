#include <platen/inspect.h>

namespace platen {
namespace {

bool isRefused(PiaInput& input, const Content& content) {
    if (content.kind == FileKind::Pc3) {
        bool printerChanged = false;
        return CPlotCfg3::fromInput(input, printerChanged) == nullptr;
    }
    if (content.kind == FileKind::Pmp) {
        return !PlotModelParam().init(input);
    }
    return content.rejected;
}

}  // namespace

DocumentState documentState(PiaInput& input) {
    input.report().clear();
    const Content content = recognise(input);
    DocumentState state{content.kind, {}};
    if (isRefused(input, content)) {
        state.fault = input.report().failure().value_or(PiaFinding{}).describe();
    }
    input.report().clear();
    return state;
}

std::string lostDocument(const DocumentState& before, const DocumentState& after) {
    if (!before.fault.empty() || before.kind == FileKind::Pia) {
        return {};
    }
    if (after.kind == FileKind::Pia) {
        return std::string("the file no longer has the marks of a ") + kindName(before.kind);
    }
    return after.fault.empty() ? "" : "the document can no longer be read: " + after.fault;
}

}  // namespace platen
