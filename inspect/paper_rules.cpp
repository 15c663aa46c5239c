#include "inspect/paper_rules.h"

#include <algorithm>
#include <cstddef>
#include <set>
#include <string_view>
#include <utility>

#include <platen/oda.h>
#include <platen/utcore.h>
#include "plotcfg/paper_units.h"

namespace platen {
namespace {

/// Lengths are written with six digits after the point.
constexpr double rounding = 1e-4;

/// For values that were converted.
std::wstring rounded(double length) {
    constexpr int places = 4;
    const std::string digits = ut::formatRounded(length, places);
    return {digits.begin(), digits.end()};
}

std::wstring under(const std::wstring& path, std::wstring_view name) {
    return (path + L'/').append(name);
}

/// Where an entry of a list stands in the file.
struct Place {
    std::wstring path;
    /// False when the reader has given up on it, and said so: most of it is not from the file.
    bool whole;
};

/// The blocks of the list at `path`, which yield its entries.
std::vector<Place> placesOf(const PiaInput& input, const std::wstring& path) {
    const PiaBlock* list = input.root();
    for (std::wstring_view rest = path; list != nullptr && !rest.empty();) {
        const std::size_t end = std::min(rest.find(L'/'), rest.size());
        list =
            static_cast<const PiaBlock*>(list->findItem(rest.substr(0, end), PiaItemType::Block));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    std::set<std::wstring_view> partlyRead;
    for (const PiaFinding& finding : input.report().warnings()) {
        if (finding.code == PiaCode::EntryPartlyRead) {
            partlyRead.insert(finding.path);
        }
    }
    std::vector<Place> places;
    for (std::size_t index = 0; list != nullptr && index < list->items.size(); ++index) {
        if (list->items[index]->type == PiaItemType::Block) {
            std::wstring entry = under(path, list->items[index]->name);
            const bool whole = !partlyRead.contains(entry);
            places.push_back({std::move(entry), whole});
        }
    }
    return places;
}

/// A paper in millimetres or pixels, and where its lengths stand.
struct Paper {
    std::wstring name;
    double width;
    double height;
    /// Corners of the printable area.
    double left;
    double bottom;
    double right;
    double top;
    std::wstring path;
};

void checkPaper(const Paper& paper, const PaperLimits& limits, FindingList& findings) {
    const auto size = [](double width, double height) {
        return rounded(width) + L" x " + rounded(height);
    };
    if (paper.width <= 0 || paper.height <= 0) {
        findings.warn({.code = PiaCode::PaperWithoutSize,
                       .path = paper.path,
                       .expected = L"a width and a height for " + paper.name,
                       .found = size(paper.width, paper.height)});
        return;
    }
    const auto exceeds = [](double length, double limit) {
        return limit != 0 && length > limit + rounding;
    };
    if (exceeds(paper.width, limits.width) || exceeds(paper.height, limits.height)) {
        findings.warn(
            {.code = PiaCode::PaperTooLarge,
             .path = paper.path,
             .expected = L"at most " + size(limits.width, limits.height) +
                         (limits.width == 0 || limits.height == 0 ? L", where 0 is no limit" : L""),
             .found = size(paper.width, paper.height)});
    }
    if (paper.left < -rounding || paper.bottom < -rounding || paper.right < paper.left ||
        paper.top < paper.bottom || paper.right > paper.width + rounding ||
        paper.top > paper.height + rounding) {
        findings.warn({.code = PiaCode::PaperMargins,
                       .path = paper.path,
                       .expected = L"an area within " + size(paper.width, paper.height),
                       .found = rounded(paper.left) + L", " + rounded(paper.bottom) + L" to " +
                                rounded(paper.right) + L", " + rounded(paper.top)});
    }
}

/// Notes the papers whose name an earlier one has.
class PaperNames {
public:
    void check(const std::wstring& name, std::wstring path, FindingList& findings) {
        if (!names_.insert(name).second) {
            findings.warn({.code = PiaCode::PaperNameDuplicate,
                           .path = std::move(path),
                           .expected = L"a name of its own",
                           .found = name});
        }
    }

private:
    std::set<std::wstring> names_;
};

}  // namespace

void checkChosenPaper(const CMediaNode& media, const PaperLimits& limits, FindingList& findings) {
    if (media.size.name.empty()) {
        return;
    }
    const auto& description = media.size.mediaDescription;
    checkPaper({.name = media.size.name,
                .width = description.mediaBounds.urx,
                .height = description.mediaBounds.ury,
                .left = description.printableBoundsLlx,
                .bottom = description.printableBoundsLly,
                .right = description.printableBoundsUrx,
                .top = description.printableBoundsUry,
                .path = L"media/size/media_description"},
               limits, findings);
}

void checkCustomPapers(const PiaInput& input, const std::vector<CustomPaperSize>& papers,
                       const PaperLimits& limits, FindingList& findings) {
    const std::vector<Place> places = placesOf(input, L"media/custom_papers");
    PaperNames names;
    for (std::size_t index = 0; index < std::min(papers.size(), places.size()); ++index) {
        const CustomPaperSize& paper = papers[index];
        const auto& [path, whole] = places[index];
        if (!whole) {
            continue;
        }
        names.check(paper.globalName, under(path, L"global_name"), findings);
        if (paper.units < OdDbPlotSettings::kInches || paper.units > OdDbPlotSettings::kPixels) {
            findings.warn({.code = PiaCode::PaperUnits,
                           .path = under(path, L"units"),
                           .found = std::to_wstring(paper.units)});
        }
        const double scale = paper_units::millimetresPerUnit(paper.units);
        checkPaper({.name = paper.globalName,
                    .width = paper.width * scale,
                    .height = paper.height * scale,
                    .left = paper.left * scale,
                    .bottom = paper.bottom * scale,
                    .right = (paper.width - paper.right) * scale,
                    .top = (paper.height - paper.top) * scale,
                    .path = path},
                   limits, findings);
    }
}

void checkPaperLists(const PiaInput& input, const std::wstring& path, const PmpSizeNode& sizes,
                     const PmpDescriptionNode& descriptions, const PaperLimits& limits,
                     FindingList& findings) {
    const std::vector<Place> sizePlaces = placesOf(input, under(path, L"size"));
    const std::vector<Place> descriptionPlaces = placesOf(input, under(path, L"description"));
    std::set<std::wstring_view> described;
    for (std::size_t index = 0;
         index < std::min(descriptions.papers.size(), descriptionPlaces.size()); ++index) {
        const auto& entry = descriptions.papers[index];
        described.insert(entry.name);
        if (descriptionPlaces[index].whole) {
            checkPaper({.name = entry.name,
                        .width = entry.mediaBoundsUrx,
                        .height = entry.mediaBoundsUry,
                        .left = entry.printableBoundsLlx,
                        .bottom = entry.printableBoundsLly,
                        .right = entry.printableBoundsUrx,
                        .top = entry.printableBoundsUry,
                        .path = descriptionPlaces[index].path},
                       limits, findings);
        }
    }
    PaperNames names;
    for (std::size_t index = 0; index < std::min(sizes.papers.size(), sizePlaces.size()); ++index) {
        const auto& entry = sizes.papers[index];
        const auto& [place, whole] = sizePlaces[index];
        if (!whole) {
            continue;
        }
        names.check(entry.name, under(place, L"name"), findings);
        if (!described.contains(entry.mediaDescriptionName)) {
            findings.warn({.code = PiaCode::PaperNotDescribed,
                           .path = under(place, L"media_description_name"),
                           .expected = L"the name of a description",
                           .found = entry.mediaDescriptionName});
        }
    }
}

}  // namespace platen
