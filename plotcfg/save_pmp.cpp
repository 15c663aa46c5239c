#include "plotcfg/save_pmp.h"

#include <platen/utcore.h>

namespace plot_config {

bool savePmp(CPlotCfg3& config, std::wstring_view path,
             const std::function<bool(const std::wstring&)>& write,
             const std::function<bool(const std::wstring&)>& mayGoTo) {
    PlotModelParam& pmp = *config.pmp();
    // Other programs read the file from other folders.
    std::wstring place = pmp.filePath.isEmpty() ? L"" : ut::fullPath(pmp.filePath.text());
    if (place.empty() || !write(place)) {
        place = config.placeForPmp(path);
        if (!mayGoTo(place) || !write(place)) {
            return false;
        }
    }
    pmp.filePath = OdString(place);
    pmp.userDefinedModelPathname = place;
    config.meta.userDefinedModelPathname = place;
    return true;
}

}  // namespace plot_config
