#include <cmath>
#include <cstddef>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <platen/papers.h>
#include <platen/plotcfg.h>
#include "plotcfg/pmp_papers.h"
#include "pmp/unique_names.h"

namespace {

/// Makes the papers of a PMP's lists, each lookup of a description in the time of few comparisons.
void appendPapers(const UdmNode::MediaNode& media, std::vector<CustomPaperSize>& papers) {
    std::map<std::wstring_view, const PmpDescriptionNode::PaperSizeDescription*> descriptions;
    for (const auto& description : media.description.papers) {
        descriptions.emplace(description.name, &description);
    }
    for (const auto& size : media.size.papers) {
        const auto found = descriptions.find(size.mediaDescriptionName);
        papers.push_back(
            plot_config::fromPmp(size, found == descriptions.end() ? nullptr : found->second));
    }
}

/// Adds what `CustomPaperSize::writeToPmp` would, to lists that were empty, without looking
/// through them for every paper. It knows the entries that there were before.
class PmpPaperWriter {
public:
    explicit PmpPaperWriter(const PlotModelParam* before) {
        if (before != nullptr && before->udm.media) {
            for (const auto& size : before->udm.media->size.papers) {
                known_.insert(size.name);
            }
        }
    }

    void write(const CustomPaperSize& paper, UdmNode::MediaNode& media) {
        plot_config::PmpPaper entries =
            plot_config::toPmp(paper, known_.contains(paper.globalName));
        entries.description.name = descriptionNames_.make(entries.description.name);
        entries.size.name = sizeNames_.make(entries.size.name);
        entries.size.mediaDescriptionName = entries.description.name;
        media.description.papers.push_back(std::move(entries.description));
        media.size.papers.push_back(std::move(entries.size));
    }

private:
    UniqueNames descriptionNames_;
    UniqueNames sizeNames_;
    std::set<std::wstring> known_;
};

bool isZero(double length) { return std::abs(length) <= 1e-10; }

}  // namespace

void CPlotCfg3::getCustomPaperSizes(std::vector<CustomPaperSize>& papers) const {
    papers = media.customPapers ? media.customPapers->papers : std::vector<CustomPaperSize>();
    if (pmp_ && pmp_->udm.media) {
        appendPapers(*pmp_->udm.media, papers);
    }
}

void CPlotCfg3::setCustomPaperSizes(const std::vector<CustomPaperSize>& papers) {
    std::vector<CustomPaperSize> own;
    UdmNode::MediaNode shared;
    PmpPaperWriter writer(pmp_.get());
    for (const CustomPaperSize& paper : papers) {
        if (paper.source == 0) {
            own.push_back(paper);
        } else if (paper.source == 1) {
            writer.write(paper, shared);
        }
    }
    if (media.customPapers || !own.empty()) {
        media.customPapers.emplace().papers = std::move(own);
    }
    if (!shared.size.papers.empty() && !pmp_) {
        attachPMP(PlotModelParam::create(meta));
    }
    if (pmp_ && !pmp_->udm.media && !shared.size.papers.empty()) {
        pmp_->udm.media = std::make_shared<UdmNode::MediaNode>();
    }
    if (pmp_ && pmp_->udm.media) {
        pmp_->udm.media->size = std::move(shared.size);
        pmp_->udm.media->description = std::move(shared.description);
    }
}

void CPlotCfg3::setPaperSize(std::size_t index, bool pdf, bool& changed) {
    std::vector<CustomPaperSize> papers;
    getCustomPaperSizes(papers);
    const std::size_t builtInCount = pdf ? wut::cPdfPapersCount : wut::cImagePapersCount;
    bool renamed = false;
    if (index < papers.size()) {
        renamed = media.applyPaper(papers[index]);
    } else if (index - papers.size() < builtInCount) {
        const wut::PaperSizeInfo* builtIn = pdf ? wut::cPdfPapers : wut::cImagePapers;
        renamed = media.applyPaper(builtIn[index - papers.size()]);
    }
    changed = changed || renamed;
}

void CPlotCfg3::initMaxPaperDimensions() {
    if (builtInDevice_ == nullptr || !pmp_) {
        return;
    }
    const double largest = isBuiltInPDF(this) ? MAX_PDF_PAPER_DIM : MAX_IMG_PAPER_DIM;
    auto& limits = pmp_->mod.media;
    limits.sizeMaxX = isZero(limits.sizeMaxX) ? largest : limits.sizeMaxX;
    // A roll without a length of its own is as long as the device takes, whatever the height says;
    // its length stays unset.
    const bool endlessRoll = pmp_->udm.media && isZero(pmp_->udm.media->maxRollHeight);
    limits.sizeMaxY = endlessRoll || isZero(limits.sizeMaxY) ? largest : limits.sizeMaxY;
}

void CPlotCfg3::getMaxPaperDimensions(double& width, double& height) const {
    if (builtInDevice_ == nullptr) {
        width = height = 0;
    } else if (pmp_) {
        width = pmp_->mod.media.sizeMaxX;
        height = pmp_->mod.media.sizeMaxY;
    } else {
        width = height = isBuiltInPDF(this) ? MAX_PDF_PAPER_DIM : MAX_IMG_PAPER_DIM;
    }
}
