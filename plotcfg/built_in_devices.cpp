#include <algorithm>
#include <memory>
#include <vector>

#include <platen/plotcfg.h>
#include "log/translated.h"
#include "plotcfg/property_names.h"

namespace {

struct DeviceRow {
    BuiltInPlotDevice::Type type;
    const wchar_t* name;
    const wchar_t* extension;
    const wchar_t* description;
    const wchar_t* modelName;
};

constexpr DeviceRow deviceRows[] = {
    {BuiltInPlotDevice::Pdf, BuiltInPlotDevice::pdfName, L"pdf", L"Built-in direct output to PDF",
     L"pdf"},
    {BuiltInPlotDevice::Bmp, BuiltInPlotDevice::bmpName, L"bmp", L"Built-in direct output to BMP",
     L"bmp"},
    {BuiltInPlotDevice::Png, BuiltInPlotDevice::pngName, L"png", L"Built-in direct output to PNG",
     L"png"},
    {BuiltInPlotDevice::Jpg, BuiltInPlotDevice::jpgName, L"jpg", L"Built-in direct output to JPG",
     L"jfif"},
    {BuiltInPlotDevice::Tif, BuiltInPlotDevice::tifName, L"tif", L"Built-in direct output to TIF",
     L"tiffcomp"},
};

std::vector<BuiltInPlotDevice> makeDevices() {
    std::vector<BuiltInPlotDevice> devices;
    for (const DeviceRow& row : deviceRows) {
        BuiltInPlotDevice& device = devices.emplace_back();
        device.type = row.type;
        device.name = row.name;
        device.extension = row.extension;
        device.description = OdString(wut::translated(row.description));
        device.modelName = row.modelName;
    }
    return devices;
}

const BuiltInPlotDevice* find(OdString BuiltInPlotDevice::*member, const OdString& text) {
    const auto& devices = BuiltInPlotDevice::s_cBuiltInPlotDevices;
    const auto found = std::find_if(devices.begin(), devices.end(), [&](const auto& device) {
        return (device.*member).equalsNoCase(text);
    });
    return found == devices.end() ? nullptr : &*found;
}

}  // namespace

const std::vector<BuiltInPlotDevice> BuiltInPlotDevice::s_cBuiltInPlotDevices = makeDevices();

const BuiltInPlotDevice* BuiltInPlotDevice::getByName(const OdString& name) {
    return find(&BuiltInPlotDevice::name, name);
}

const BuiltInPlotDevice* BuiltInPlotDevice::getByModelName(const OdString& modelName) {
    return find(&BuiltInPlotDevice::modelName, modelName);
}

void CPlotCfg3::checkIfBuiltInDevice() {
    builtInDevice_ = BuiltInPlotDevice::getByModelName(OdString(meta.canonicalModelName));
    bool isPdf = false;
    if (builtInDevice_ == nullptr && custom && custom->get(isPdf, plot_config::pdfExport) &&
        isPdf) {
        // Made for another PDF driver, but marked as plotting to PDF all the same.
        builtInDevice_ = &BuiltInPlotDevice::s_cBuiltInPlotDevices.front();
    }
}

std::unique_ptr<CPlotCfg3> CPlotCfg3::createForBuiltInDevice(const wchar_t* name) {
    const BuiltInPlotDevice* device = BuiltInPlotDevice::getByName(name);
    if (device == nullptr) {
        return nullptr;
    }
    std::unique_ptr<CPlotCfg3> config(new CPlotCfg3);
    const bool pdf = device->type == BuiltInPlotDevice::Pdf;
    config->builtInDevice_ = device;
    config->meta.localizedModelName = name;
    config->meta.fileOnly = true;
    config->meta.configDescription = device->description.text();
    config->meta.canonicalModelName = device->modelName.text();
    config->meta.canonicalFamilyName = pdf ? L"Autodesk ePlot" : L"Raster File Formats";
    config->io.plotToFile = true;
    config->resColorMem.numColors = 1 << 24;
    config->resColorMem.colorDepth = 24;
    bool changed = false;
    config->setPaperSize(0, pdf, changed);
    CCustomNode& custom = config->custom.emplace();
    if (pdf) {
        custom.set(true, plot_config::pdfExport, true);
        wut::ExportPdfOptions().writeToPc3(*config);
    } else {
        OdCmColor white;
        white.setRGB(255, 255, 255);
        custom.setRasterBkgColor(white);
    }
    return config;
}

bool CPlotCfg3::isBuiltInPDF(const CPlotCfg3* config) {
    return config != nullptr && config->builtInDevice_ != nullptr &&
           config->builtInDevice_->type == BuiltInPlotDevice::Pdf;
}

bool CPlotCfg3::isBuiltInImage(const CPlotCfg3* config) {
    return config != nullptr && config->builtInDevice_ != nullptr &&
           config->builtInDevice_->type != BuiltInPlotDevice::Pdf;
}
