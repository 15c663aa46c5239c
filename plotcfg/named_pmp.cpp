#include "plotcfg/named_pmp.h"

#include <utility>

#include <platen/oda.h>
#include <platen/utcore.h>

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
    found.report = std::move(input.report());
    return found;
}

}  // namespace plot_config
