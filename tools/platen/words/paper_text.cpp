#include "tools/platen/words/paper_text.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <memory>
#include <ostream>
#include <span>

#include <platen/oda.h>
#include <platen/papers.h>
#include "tools/platen/words/words.h"

namespace cli::words {
namespace {

/// More of a list than this nobody reads on a screen.
constexpr std::size_t papersShown = 100;

std::string inWords(const CustomPaperSize& paper) {
    std::string words = text(paper.localName.empty() ? paper.globalName : paper.localName);
    if (!paper.localName.empty() && paper.localName != paper.globalName) {
        words += " (" + quoted(paper.globalName) + ")";
    }
    words += ": " + sizeInWords(paper.width, paper.height, paper.units);
    if (paper.left == 0 && paper.bottom == 0 && paper.right == 0 && paper.top == 0) {
        return words + ", no margins";
    }
    return words + ", margins left " + roundedNumber(paper.left) + ", bottom " +
           roundedNumber(paper.bottom) + ", right " + roundedNumber(paper.right) + ", top " +
           roundedNumber(paper.top);
}

/// An entry of any list of a PMP.
CustomPaperSize paperOf(const PmpSizeNode::PaperSize& size,
                        const PmpDescriptionNode::PaperSizeDescription& description) {
    UdmNode user;
    user.media = std::make_shared<UdmNode::MediaNode>();
    user.media->size.papers.push_back(size);
    user.media->description.papers.push_back(description);
    CustomPaperSize paper;
    paper.initFromPmp(user, 0);
    if (!description.dimensional) {
        paper.units = OdDbPlotSettings::kPixels;
    }
    return paper;
}

void describeEnd(std::size_t count, std::ostream& out) {
    if (count > papersShown) {
        out << "    and " << count - papersShown << " more; info --json has them all\n";
    }
}

bool isInInches(const CPlotCfg3& config) {
    const std::wstring& name = config.media.size.name;
    std::vector<CustomPaperSize> own;
    config.getCustomPaperSizes(own);
    const auto ownPaper = std::find_if(own.begin(), own.end(), [&](const CustomPaperSize& paper) {
        return paper.globalName == name;
    });
    if (ownPaper != own.end()) {
        return ownPaper->units == OdDbPlotSettings::kInches;
    }
    const auto listed = [&](std::span<const wut::PaperSizeInfo> papers) {
        return std::any_of(papers.begin(), papers.end(), [&](const wut::PaperSizeInfo& paper) {
            return name == paper.canonicalName && paper.units == OdDbPlotSettings::kInches;
        });
    };
    return listed({wut::cPdfPapers, wut::cPdfPapersCount}) ||
           listed({wut::cNonePapers, wut::cNonePapersCount});
}

}  // namespace

std::string sizeInWords(double width, double height, std::int32_t units) {
    return roundedNumber(width) + " x " + roundedNumber(height) + " " + unitWord(units);
}

std::string limitsInWords(double width, double height, std::int32_t units) {
    const auto side = [](double length) {
        return length == 0 ? std::string("any") : roundedNumber(length);
    };
    return width == 0 && height == 0
               ? "papers of any size"
               : "papers up to " + side(width) + " x " + side(height) + " " + unitWord(units);
}

std::string chosenPaperInWords(const CPlotCfg3& config) {
    const auto& description = config.media.size.mediaDescription;
    const double width = description.mediaBounds.urx;
    const double height = description.mediaBounds.ury;
    if (!description.dimensional) {
        return sizeInWords(width, height, OdDbPlotSettings::kPixels);
    }
    const std::string metric = sizeInWords(width, height, OdDbPlotSettings::kMillimeters);
    if (!isInInches(config)) {
        return metric;
    }
    constexpr double inch = 25.4;
    return sizeInWords(width / inch, height / inch, OdDbPlotSettings::kInches) + " (" + metric +
           ")";
}

void describePapers(std::string_view label, const std::vector<CustomPaperSize>& papers,
                    std::ostream& out) {
    line(out, label, std::to_string(papers.size()));
    for (std::size_t index = 0; index < papers.size() && index < papersShown; ++index) {
        out << "    " << inWords(papers[index]) << '\n';
    }
    describeEnd(papers.size(), out);
}

void describePapers(std::string_view label, const PmpSizeNode& sizes,
                    const PmpDescriptionNode& descriptions, std::ostream& out) {
    std::map<std::wstring_view, const PmpDescriptionNode::PaperSizeDescription*> named;
    for (const auto& description : descriptions.papers) {
        named.emplace(description.name, &description);
    }
    line(out, label, std::to_string(sizes.papers.size()));
    for (std::size_t index = 0; index < sizes.papers.size() && index < papersShown; ++index) {
        const auto& size = sizes.papers[index];
        const auto found = named.find(size.mediaDescriptionName);
        if (found == named.end()) {
            out << "    " << text(size.localizedName) << " (" << quoted(size.name)
                << "): no size is described\n";
            continue;
        }
        out << "    " << inWords(paperOf(size, *found->second)) << '\n';
    }
    describeEnd(sizes.papers.size(), out);
}

}  // namespace cli::words
