#include "chart/paper_list.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <map>
#include <span>
#include <string_view>

#include <platen/oda.h>
#include <platen/papers.h>
#include <platen/utcore.h>
#include "platform/utcore/markup.h"

namespace platen::chart {
namespace {

constexpr double inch = 25.4;
constexpr const char* times = " \xC3\x97 ";

std::string textOf(std::wstring_view text) { return ut::visibleText(ut::encodeUtf8(text)); }

std::string number(double value) {
    constexpr int places = 2;
    return std::isfinite(value) ? ut::formatRounded(value, places) : "no number";
}

std::string unitWord(std::int32_t units) {
    return units == OdDbPlotSettings::kInches   ? "in"
           : units == OdDbPlotSettings::kPixels ? "pixels"
                                                : "mm";
}

std::string marginsInWords(const CustomPaperSize& paper) {
    const std::string unit = ' ' + unitWord(paper.units);
    if (paper.left == 0 && paper.bottom == 0 && paper.right == 0 && paper.top == 0) {
        return "no margins";
    }
    // What was inches may differ in digits that nobody reads.
    const std::string left = number(paper.left);
    if (left == number(paper.bottom) && left == number(paper.right) && left == number(paper.top)) {
        return "margins " + number(paper.left) + unit;
    }
    return "margins left " + number(paper.left) + ", bottom " + number(paper.bottom) + ", right " +
           number(paper.right) + ", top " + number(paper.top) + unit;
}

/// Nobody has larger sheets; what a file says may be any number.
bool isSide(double length) {
    constexpr double most = 1e6;
    return length > 0 && length <= most;
}

bool isMargin(double length) { return std::isfinite(length); }

ChartPaper paperOf(const CustomPaperSize& paper) {
    ChartPaper drawn;
    drawn.name = textOf(paper.localName.empty() ? paper.globalName : paper.localName);
    drawn.inPixels = paper.units == OdDbPlotSettings::kPixels;
    const double scale = paper.units == OdDbPlotSettings::kInches ? inch : 1;
    drawn.width = paper.width * scale;
    drawn.height = paper.height * scale;
    drawn.left = paper.left * scale;
    drawn.bottom = paper.bottom * scale;
    drawn.right = paper.right * scale;
    drawn.top = paper.top * scale;
    drawn.hasSize = isSide(drawn.width) && isSide(drawn.height);
    const bool marginsAreInside =
        drawn.left >= 0 && drawn.bottom >= 0 && drawn.right >= 0 && drawn.top >= 0;
    drawn.hasPrintable = drawn.hasSize && marginsAreInside && isMargin(drawn.left) &&
                         isMargin(drawn.bottom) && drawn.left + drawn.right < drawn.width &&
                         drawn.bottom + drawn.top < drawn.height;
    drawn.sizeWords =
        number(paper.width) + times + number(paper.height) + ' ' + unitWord(paper.units);
    drawn.marginWords = marginsInWords(paper);
    return drawn;
}

/// The paper that a configuration is set to, as it stands there.
CustomPaperSize chosenPaper(const CMediaNode& media) {
    const auto& description = media.size.mediaDescription;
    CustomPaperSize paper;
    paper.localName = media.size.name;
    paper.units =
        description.dimensional ? OdDbPlotSettings::kMillimeters : OdDbPlotSettings::kPixels;
    paper.width = description.mediaBounds.urx;
    paper.height = description.mediaBounds.ury;
    paper.left = description.printableBoundsLlx;
    paper.bottom = description.printableBoundsLly;
    paper.right = paper.width - description.printableBoundsUrx;
    paper.top = paper.height - description.printableBoundsUry;
    return paper;
}

/// Papers are chosen by the name that configurations have for them.
class Collector {
public:
    explicit Collector(std::wstring chosen) : chosen_(std::move(chosen)) {}

    void add(const CustomPaperSize& paper, bool custom, std::string origin) {
        ChartPaper drawn = paperOf(paper);
        drawn.custom = custom;
        drawn.originWords = std::move(origin);
        drawn.chosen = !found_ && !chosen_.empty() && paper.globalName == chosen_;
        found_ = found_ || drawn.chosen;
        papers.push_back(std::move(drawn));
    }

    /// The entries of two lists that belong together by the names of the second.
    void add(const PmpSizeNode& sizes, const PmpDescriptionNode* descriptions,
             const std::string& origin) {
        std::map<std::wstring_view, const PmpDescriptionNode::PaperSizeDescription*> named;
        for (std::size_t index = 0; descriptions != nullptr && index < descriptions->papers.size();
             ++index) {
            named.emplace(descriptions->papers[index].name, &descriptions->papers[index]);
        }
        for (const PmpSizeNode::PaperSize& size : sizes.papers) {
            CustomPaperSize paper;
            paper.globalName = size.name;
            paper.localName = size.localizedName;
            if (const auto found = named.find(size.mediaDescriptionName); found != named.end()) {
                const auto& description = *found->second;
                paper.units = description.dimensional ? OdDbPlotSettings::kMillimeters
                                                      : OdDbPlotSettings::kPixels;
                paper.width = description.mediaBoundsUrx;
                paper.height = description.mediaBoundsUry;
                paper.left = description.printableBoundsLlx;
                paper.bottom = description.printableBoundsLly;
                paper.right = paper.width - description.printableBoundsUrx;
                paper.top = paper.height - description.printableBoundsUry;
            }
            add(paper, false, origin);
        }
    }

    void addDevicePapers(std::span<const wut::PaperSizeInfo> sheets) {
        for (const wut::PaperSizeInfo& sheet : sheets) {
            CustomPaperSize paper;
            paper.globalName = sheet.canonicalName;
            paper.localName = sheet.displayName;
            paper.units = sheet.units;
            paper.width = sheet.width;
            paper.height = sheet.height;
            paper.left = sheet.left;
            paper.bottom = sheet.bottom;
            paper.right = sheet.right;
            paper.top = sheet.top;
            add(paper, false, "of the device");
        }
    }

    bool found() const { return found_; }

    std::vector<ChartPaper> papers;

private:
    std::wstring chosen_;
    bool found_ = false;
};

constexpr const char* inParameters = "custom, in the PMP";

/// "; largest paper 914 × 5080 mm"
std::string limitInWords(double width, double height) {
    return width > 0 && height > 0 ? "; papers up to " + number(width) + times + number(height)
                                   : "";
}

std::string countInWords(std::size_t count) {
    return count == 0   ? "no custom papers"
           : count == 1 ? "1 custom paper"
                        : std::to_string(count) + " custom papers";
}

std::size_t customIn(const std::vector<ChartPaper>& papers) {
    return static_cast<std::size_t>(std::ranges::count(papers, true, &ChartPaper::custom));
}

}  // namespace

PaperList papersOf(const CPlotCfg3& config, bool devicePapers) {
    Collector collector(config.media.size.name);
    std::vector<CustomPaperSize> own;
    config.getCustomPaperSizes(own);
    for (const CustomPaperSize& paper : own) {
        collector.add(paper, true,
                      paper.source == 0 ? "custom, in the configuration" : inParameters);
    }
    if (const PlotModelParam* pmp = config.pmp(); pmp != nullptr && pmp->mod.media.size) {
        collector.add(*pmp->mod.media.size, pmp->mod.media.description.get(), "of the device");
    }
    if (devicePapers && CPlotCfg3::isBuiltInPDF(&config)) {
        collector.addDevicePapers({wut::cPdfPapers, wut::cPdfPapersCount});
    } else if (devicePapers && CPlotCfg3::isBuiltInImage(&config)) {
        collector.addDevicePapers({wut::cImagePapers, wut::cImagePapersCount});
    }
    PaperList list;
    list.papers = std::move(collector.papers);
    const std::size_t custom = customIn(list.papers);
    const bool namesPaper = !config.media.size.name.empty() || !config.media.emptyBounds();
    if (!collector.found() && namesPaper) {
        ChartPaper chosen = paperOf(chosenPaper(config.media));
        chosen.chosen = true;
        if (chosen.name.empty()) {
            chosen.name = "(no name)";
        }
        list.papers.insert(list.papers.begin(), std::move(chosen));
    }
    const BuiltInPlotDevice* device = config.builtInDevice();
    const std::wstring_view printer = config.meta.winDeviceName;
    list.subtitle = "Plot configuration for ";
    list.subtitle += device != nullptr ? textOf(device->name.text())
                     : printer.empty() ? "no named printer"
                                       : textOf(printer);
    list.subtitle += ", " + countInWords(custom);
    double width = 0;
    double height = 0;
    config.getMaxPaperDimensions(width, height);
    const std::string limit = limitInWords(width, height);
    list.subtitle +=
        limit.empty() ? "" : limit + (CPlotCfg3::isBuiltInImage(&config) ? " pixels" : " mm");
    return list;
}

PaperList papersOf(const PlotModelParam& parameters) {
    Collector collector(parameters.mod.media.defaultSize);
    if (parameters.udm.media) {
        const std::size_t count = parameters.udm.media->size.papers.size();
        for (std::size_t index = 0; index < count; ++index) {
            CustomPaperSize paper;
            paper.initFromPmp(parameters.udm, index);
            collector.add(paper, true, "custom");
        }
    }
    if (parameters.mod.media.size) {
        collector.add(*parameters.mod.media.size, parameters.mod.media.description.get(),
                      "of the device");
    }
    PaperList list;
    list.papers = std::move(collector.papers);
    const std::wstring& model = parameters.localizedModelName.empty()
                                    ? parameters.canonicalModelName
                                    : parameters.localizedModelName;
    const std::string limit =
        limitInWords(parameters.mod.media.sizeMaxX, parameters.mod.media.sizeMaxY);
    list.subtitle = "Plot model parameters" + (model.empty() ? "" : " for " + textOf(model)) +
                    ", " + countInWords(customIn(list.papers)) +
                    (limit.empty() ? "" : limit + " mm");
    const auto& calibration = parameters.udm.calibration;
    if (calibration.x != 1 || calibration.y != 1) {
        list.subtitle += "; calibration x " + ut::formatRounded(calibration.x, 6) + ", y " +
                         ut::formatRounded(calibration.y, 6);
    }
    return list;
}

}  // namespace platen::chart
