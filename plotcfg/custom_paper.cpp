#include <algorithm>
#include <cmath>
#include <iterator>
#include <string>
#include <utility>

#include <platen/plotcfg.h>
#include <platen/utcore.h>
#include "plotcfg/paper_units.h"
#include "plotcfg/pmp_papers.h"

namespace {

/// The word that begins the name of a PMP entry says its unit.
struct UnitWord {
    const wchar_t* word;
    OdDbPlotSettings::PlotPaperUnits units;
    /// Ends the size in the name of a size entry.
    const wchar_t* sizeUnit;
    /// Ends the area in the name of a description entry, which is in millimetres or pixels.
    const wchar_t* areaUnit;
};

constexpr UnitWord unitWords[] = {
    {L"UserDefinedMetric", OdDbPlotSettings::kMillimeters, L"MM", L"MM"},
    {L"UserDefinedImperial", OdDbPlotSettings::kInches, L"Inches", L"MM"},
    {L"UserDefinedRaster", OdDbPlotSettings::kPixels, L"Pixels", L"Pixels"},
};

const UnitWord& wordOf(std::int32_t units) {
    const auto* found = std::find_if(std::begin(unitWords), std::end(unitWords),
                                     [&](const UnitWord& entry) { return entry.units == units; });
    return found == std::end(unitWords) ? unitWords[0] : *found;
}

std::wstring_view firstWord(std::wstring_view text) { return text.substr(0, text.find(L' ')); }

/// The entry whose word begins the name, or null.
const UnitWord* unitNamedBy(std::wstring_view name) {
    const auto* found = std::find_if(
        std::begin(unitWords), std::end(unitWords),
        [&](const UnitWord& entry) { return ut::equalNoCase(firstWord(name), entry.word); });
    return found == std::end(unitWords) ? nullptr : found;
}

/// Whether readers will know the paper by its own name and take it for what it is. A new paper
/// (not `known`) has no name but the one for people.
bool keepsName(const CustomPaperSize& paper, const UnitWord& word, bool known) {
    if (const UnitWord* named = unitNamedBy(paper.globalName)) {
        return named == &word;
    }
    return word.units == OdDbPlotSettings::kMillimeters && !paper.globalName.empty() &&
           (known || paper.globalName != paper.localName);
}

/// "UserDefinedMetric (210.00 x 297.00MM)"
std::wstring sizeName(const UnitWord& word, const CustomPaperSize& paper) {
    return std::wstring(word.word) + L" (" + ut::formatFixed(paper.width, 2) + L" x " +
           ut::formatFixed(paper.height, 2) + word.sizeUnit + L")";
}

/// "UserDefinedMetric Portrait 210.00W x 297.00H - (5, 5) x (205, 290) =57000 MM"
std::wstring descriptionName(const UnitWord& word, bool landscape,
                             const PmpDescriptionNode::PaperSizeDescription& entry) {
    const auto corner = [](double x, double y) {
        return L"(" + ut::formatFixed(x, 0) + L", " + ut::formatFixed(y, 0) + L")";
    };
    return std::wstring(word.word) + (landscape ? L" Landscape " : L" Portrait ") +
           ut::formatFixed(entry.mediaBoundsUrx, 2) + L"W x " +
           ut::formatFixed(entry.mediaBoundsUry, 2) + L"H - " +
           corner(entry.printableBoundsLlx, entry.printableBoundsLly) + L" x " +
           corner(entry.printableBoundsUrx, entry.printableBoundsUry) + L" =" +
           ut::formatFixed(entry.printableArea, 0) + L" " + word.areaUnit;
}

}  // namespace

namespace plot_config {

PmpPaper toPmp(const CustomPaperSize& paper, bool known) {
    const UnitWord& word = wordOf(paper.units);
    const double scale = paper_units::millimetresPerUnit(paper.units);
    const bool landscape = paper.width > paper.height;

    PmpPaper entries;
    auto& description = entries.description;
    description.mediaBoundsUrx = paper.width * scale;
    description.mediaBoundsUry = paper.height * scale;
    description.printableBoundsLlx = paper.left * scale;
    description.printableBoundsLly = paper.bottom * scale;
    description.printableBoundsUrx = (paper.width - paper.right) * scale;
    description.printableBoundsUry = (paper.height - paper.top) * scale;
    description.printableArea = (paper.width - paper.right - paper.left) * scale *
                                ((paper.height - paper.top - paper.bottom) * scale);
    description.dimensional = paper.units != OdDbPlotSettings::kPixels;
    description.name = descriptionName(word, landscape, description);

    entries.size.name = keepsName(paper, word, known) ? paper.globalName : sizeName(word, paper);
    entries.size.localizedName = paper.localName;
    entries.size.landscapeMode = landscape;
    return entries;
}

CustomPaperSize fromPmp(const PmpSizeNode::PaperSize& size,
                        const PmpDescriptionNode::PaperSizeDescription* description) {
    CustomPaperSize paper;
    paper.source = 1;
    paper.globalName = size.name;
    paper.localName = size.localizedName;
    if (const UnitWord* named = unitNamedBy(paper.globalName)) {
        paper.units = named->units;
    }
    if (description != nullptr) {
        const double scale = paper_units::millimetresPerUnit(paper.units);
        paper.width = description->mediaBoundsUrx / scale;
        paper.height = description->mediaBoundsUry / scale;
        paper.left = description->printableBoundsLlx / scale;
        paper.bottom = description->printableBoundsLly / scale;
        paper.right = (description->mediaBoundsUrx - description->printableBoundsUrx) / scale;
        paper.top = (description->mediaBoundsUry - description->printableBoundsUry) / scale;
    }
    return paper;
}

}  // namespace plot_config

bool CustomPaperSize::initFromPmp(const UdmNode& udm, std::size_t index) {
    if (!udm.media || index >= udm.media->size.papers.size()) {
        return false;
    }
    const PmpSizeNode::PaperSize& size = udm.media->size.papers[index];
    const auto& descriptions = udm.media->description.papers;
    const auto found =
        std::find_if(descriptions.begin(), descriptions.end(),
                     [&](const auto& entry) { return entry.name == size.mediaDescriptionName; });
    *this = plot_config::fromPmp(size, found == descriptions.end() ? nullptr : &*found);
    return true;
}

void CustomPaperSize::writeToPmp(UdmNode& udm) const {
    if (!udm.media) {
        udm.media = std::make_shared<UdmNode::MediaNode>();
    }
    plot_config::PmpPaper entries = plot_config::toPmp(*this, false);
    udm.media->description.papers.push_back(std::move(entries.description));
    udm.media->description.makeLastNameUnique();
    entries.size.mediaDescriptionName = udm.media->description.papers.back().name;
    udm.media->size.papers.push_back(std::move(entries.size));
    udm.media->size.makeLastNameUnique();
}

bool CustomPaperSize::operator==(const CustomPaperSize& other) const {
    constexpr double tolerance = 1e-10;
    const auto near = [](double one, double another) {
        return std::abs(one - another) <= tolerance;
    };
    return source == other.source && globalName == other.globalName &&
           localName == other.localName && units == other.units && near(width, other.width) &&
           near(height, other.height) && near(left, other.left) && near(bottom, other.bottom) &&
           near(right, other.right) && near(top, other.top);
}
