#include "tools/platen/words/config_text.h"

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include <platen/oda.h>
#include <platen/plotcfg.h>
#include "tools/platen/words/paper_text.h"
#include "tools/platen/words/words.h"

namespace cli::words {
namespace {

/// Words that are there, with commas between them.
class Words {
public:
    Words& add(std::string words) {
        if (!words.empty()) {
            words_ += (words_.empty() ? "" : ", ") + words;
        }
        return *this;
    }
    Words& add(bool condition, std::string_view words) {
        return condition ? add(std::string(words)) : *this;
    }
    Words& add(std::string_view label, std::wstring_view value) {
        return value.empty() ? *this : add(std::string(label) + text(value));
    }
    std::string orNone() const { return words_.empty() ? "(none)" : words_; }
    bool empty() const { return words_.empty(); }

private:
    std::string words_;
};

void describeDevice(const CPlotCfg3& config, std::ostream& out) {
    const CMetaNode& meta = config.meta;
    if (const BuiltInPlotDevice* device = config.builtInDevice()) {
        line(out, "device", text(device->name.text()) + ", built in");
    } else if (!meta.winDeviceName.empty()) {
        line(out, "device", "printer " + quoted(meta.winDeviceName));
    } else {
        line(out, "device", "no printer is named");
    }
    if (config.builtInDevice() == nullptr && meta.defaultSystemCfg.value_or(false)) {
        line(out, "", "programs take the default printer instead, and its settings");
    }
    describeMeta(meta, out);
}

void describePaper(const CPlotCfg3& config, std::ostream& out) {
    const CMediaNode& media = config.media;
    const auto& description = media.size.mediaDescription;
    constexpr int landscape = 2;
    line(out, "paper",
         Words()
             .add(media.size.name.empty() ? "no name" : text(media.size.name))
             .add(chosenPaperInWords(config))
             .add(media.dmOrientation == landscape, "landscape")
             .add(media.size.dmScale != 100,
                  "scaled to " + std::to_string(media.size.dmScale) + " %")
             .orNone());
    line(out, "printable",
         roundedNumber(description.printableBoundsLlx) + ", " +
             roundedNumber(description.printableBoundsLly) + " to " +
             roundedNumber(description.printableBoundsUrx) + ", " +
             roundedNumber(description.printableBoundsUry) + " " +
             unitWord(description.dimensional ? OdDbPlotSettings::kMillimeters
                                              : OdDbPlotSettings::kPixels));
    if (!media.type.empty()) {
        line(out, "media type", text(media.type));
    }
    line(out, "copies",
         Words()
             .add(std::to_string(media.numberOfCopies))
             .add(media.destination && media.destination->collatingType != 0, "collated")
             .orNone());
}

void describeColours(const CPlotCfg3& config, std::ostream& out) {
    const CResColorMemNode& node = config.resColorMem;
    constexpr int monochrome = 1;
    // Built-in devices have schemes of grays, printers a switch.
    const bool grays = config.builtInDevice() != nullptr ? node.numUnditheredColors < 0
                                                         : node.dmColor == monochrome;
    line(out, "colours",
         Words()
             .add(std::to_string(node.numColors))
             .add(std::to_string(node.colorDepth) + " bits deep")
             .add(grays, "monochrome")
             .orNone());
    line(out, "resolution",
         Words()
             .add(number(node.resolution.physResolutionX) + " x " +
                  number(node.resolution.physResolutionY) + " dots per inch")
             .add("named ", node.resolution.name)
             .orNone());
}

void describeFileOutput(const CPlotCfg3& config, std::ostream& out) {
    line(out, "output",
         Words()
             .add(config.io.plotToFile ? "to a file" : "to the device")
             .add("", config.io.pathname)
             .orNone());
    if (CPlotCfg3::isBuiltInPDF(&config)) {
        const wut::ExportPdfOptions pdf(config);
        line(out, "PDF",
             Words()
                 .add(pdf.openInViewer, "opened in the viewer")
                 .add(pdf.embedTrueType, "fonts embedded")
                 .add(pdf.trueTypeAsGeometry, "TrueType as geometry")
                 .add(pdf.exportHyperlinks, "hyperlinks")
                 .add(pdf.createBookmarks, "bookmarks")
                 .add(pdf.linesMerge, "lines merged")
                 .add("images at " + std::to_string(pdf.imageDpi) + " dots per inch")
                 .add(pdf.pdfA != 0, "PDF/A level " + std::to_string(pdf.pdfA))
                 .orNone());
    }
    if (CPlotCfg3::isBuiltInImage(&config) && config.custom) {
        const OdCmColor colour = config.custom->getRasterBkgColor();
        line(out, "background",
             "RGB " + std::to_string(colour.red()) + "," + std::to_string(colour.green()) + "," +
                 std::to_string(colour.blue()));
    }
    if (config.builtInDevice() != nullptr) {
        double width = 0;
        double height = 0;
        config.getMaxPaperDimensions(width, height);
        line(out, "limits",
             limitsInWords(width, height,
                           CPlotCfg3::isBuiltInPDF(&config) ? OdDbPlotSettings::kMillimeters
                                                            : OdDbPlotSettings::kPixels));
    }
}

void describePmp(const platen::Content& content, std::ostream& out) {
    const std::wstring& name = content.config->meta.userDefinedModelPathname;
    if (name.empty()) {
        line(out, "PMP", "none");
    } else if (content.config->pmp() != nullptr) {
        line(out, "PMP", text(name));
        line(out, "  found as", text(content.pmpPath));
    } else {
        line(out, "PMP",
             text(name) + (content.pmpPath.empty() ? ", not found" : ", cannot be read"));
    }
}

void describeProperties(const CCustomNode& custom, std::ostream& out) {
    line(out, "properties",
         std::to_string(custom.numbers().size() + custom.binaries().size() +
                        custom.strings().size() + custom.bools().size()));
    for (const auto& [name, value] : custom.numbers()) {
        out << "    " << text(name) << ": " << text(value) << '\n';
    }
    for (const auto& [name, value] : custom.binaries()) {
        out << "    " << text(name) << ": " << value.size() / 2
            << (value.size() / 2 == 1 ? " byte\n" : " bytes\n");
    }
    for (const auto& [name, value] : custom.strings()) {
        out << "    " << text(name) << ": " << quoted(value) << '\n';
    }
    for (const auto& [name, value] : custom.bools()) {
        out << "    " << text(name) << ": " << (value ? "yes" : "no") << '\n';
    }
}

}  // namespace

void describeMeta(const CMetaNode& meta, std::ostream& out) {
    const Words driver = Words()
                             .add("", meta.driverPathname)
                             .add("version ", meta.driverVersion)
                             .add("", meta.driverTagLine);
    const Words model = Words()
                            .add("", meta.localizedFamilyName.empty() ? meta.canonicalFamilyName
                                                                      : meta.localizedFamilyName)
                            .add("", meta.localizedModelName.empty() ? meta.canonicalModelName
                                                                     : meta.localizedModelName);
    if (!meta.configDescription.empty()) {
        line(out, "description", text(meta.configDescription));
    }
    if (!model.empty()) {
        line(out, "model", model.orNone());
    }
    if (!driver.empty()) {
        line(out, "driver", driver.orNone());
    }
}

void describeConfig(const platen::Content& content, std::ostream& out) {
    const CPlotCfg3& config = *content.config;
    describeDevice(config, out);
    describePaper(config, out);
    describeColours(config, out);
    describeFileOutput(config, out);
    describePmp(content, out);
    std::vector<CustomPaperSize> papers;
    config.getCustomPaperSizes(papers);
    describePapers("custom papers", papers, out);
    if (config.custom) {
        describeProperties(*config.custom, out);
    }
}

}  // namespace cli::words
