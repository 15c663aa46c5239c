#include "plotcfg/named_pmp.h"

#include <utility>

#include <platen/oda.h>
#include <platen/utcore.h>
#include "pia/node_keys.h"

namespace plot_config {

NamedPmp readNamedPmp(const std::wstring& name, const std::wstring& configuration,
                      const PiaReadOptions& options) {
    OdArray<OdString> folders;
    folders.append(OdString(std::wstring(ut::folderOf(ut::fullPath(configuration)))));
    folders.append(OdString(ut::getSetting(L"PlotCfgPath")));
    NamedPmp found;
    found.path = PlotModelParam::find(name, folders, &found.report);
    if (found.path.empty()) {
        return found;
    }
    PiaInput input;
    auto document = std::make_unique<PlotModelParam>();
    if (input.open(found.path.c_str(), options) && document->init(input)) {
        document->filePath = OdString(found.path);
        document->userDefinedModelPathname = found.path;
        found.document = std::move(document);
    }
    // What was found while it was looked for comes last.
    node_keys::passWarnings(input.report(), found.report);
    found.report = std::move(input.report());
    return found;
}

bool attachNamedPmp(CPlotCfg3& config, const std::wstring& path, PiaReport& report) {
    if (config.meta.userDefinedModelPathname.empty()) {
        return true;
    }
    NamedPmp found = readNamedPmp(config.meta.userDefinedModelPathname, path);
    const auto warnOfName = [&](PiaFinding finding) {
        // What it says of a place is about the other file.
        finding.offset.reset();
        finding.line.reset();
        finding.path = L"meta/user_defined_model_pathname";
        report.warn(std::move(finding));
    };
    for (const PiaFinding& warning : found.report.warnings()) {
        if (warning.code == PiaCode::NameAmbiguous) {
            warnOfName(warning);
        }
    }
    if (!found.document) {
        warnOfName(found.report.failure().value_or(PiaFinding{}));
        return false;
    }
    config.attachPMP(found.document.release());
    return true;
}

}  // namespace plot_config
