#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

#include <platen/plotcfg.h>
#include "plotcfg/property_names.h"

namespace wut {

namespace {

/// Without its fraction; what is beyond 32 bits becomes the nearest number that is not.
std::int32_t whole(double value) {
    using Limits = std::numeric_limits<std::int32_t>;
    return static_cast<std::int32_t>(std::clamp(
        std::trunc(value), static_cast<double>(Limits::min()), static_cast<double>(Limits::max())));
}

/// Calls `step(name, setting)` for each setting that is a custom property.
template <class Options, class Step>
void forEachProperty(Options& options, Step step) {
    step(plot_config::pdfEmbeddedTtf, options.embedTrueType);
    step(plot_config::pdfExportHyperlinks, options.exportHyperlinks);
    step(plot_config::pdfCreateBookmarks, options.createBookmarks);
    step(plot_config::pdfImageAntiAlias, options.imageAntiAlias);
    step(plot_config::pdfImageCompression, options.imageCompression);
    step(plot_config::pdfImageDpi, options.imageDpi);
    step(plot_config::pdfPdfA, options.pdfA);
    step(plot_config::pdfLayersSetting, options.layersSetting);
}

}  // namespace

ExportPdfOptions::ExportPdfOptions(const CPlotCfg3& config) { readFromPc3(config); }

void ExportPdfOptions::readFromPc3(const CPlotCfg3& config) {
    linesMerge = !config.resColorMem.linesOverwrite.value_or(true);
    trueTypeAsGeometry = !config.meta.truetypeAsText;
    resolution = whole(config.resColorMem.resolution.physResolutionX);
    if (!config.custom) {
        return;
    }
    openInViewer = config.custom->getPdfOpenInViewer();
    forEachProperty(*this, [&](const wchar_t* name, auto& setting) {
        static_cast<void>(config.custom->get(setting, name));
    });
}

void ExportPdfOptions::writeToPc3(CPlotCfg3& config) const {
    if (!config.custom) {
        config.custom.emplace();
    }
    config.custom->setPdfOpenInViewer(openInViewer);
    forEachProperty(*this, [&](const wchar_t* name, const auto& setting) {
        config.custom->set(setting, name, true);
    });
    config.resColorMem.linesOverwrite = !linesMerge;
    config.meta.truetypeAsText = !trueTypeAsGeometry;
    config.resColorMem.resolution.set(resolution);
}

}  // namespace wut
