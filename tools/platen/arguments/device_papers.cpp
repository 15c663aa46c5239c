#include "tools/platen/arguments/device_papers.h"

#include <algorithm>

#include <platen/utcore.h>

namespace cli::arguments {

PaperTable tableOf(DevicePapers device) {
    switch (device) {
        case DevicePapers::Pdf:
            return {wut::cPdfPapers, wut::cPdfPapersCount};
        case DevicePapers::Image:
            return {wut::cImagePapers, wut::cImagePapersCount};
        case DevicePapers::None:
            break;
    }
    return {wut::cNonePapers, wut::cNonePapersCount};
}

std::vector<std::wstring> displayNames(PaperTable papers) {
    std::vector<std::wstring> names;
    for (const wut::PaperSizeInfo& paper : papers) {
        names.emplace_back(paper.displayName);
    }
    return names;
}

std::optional<std::size_t> indexOf(PaperTable papers, std::wstring_view name) {
    const auto found =
        std::find_if(papers.begin(), papers.end(), [&](const wut::PaperSizeInfo& paper) {
            return ut::equalNoCase(paper.displayName, name) ||
                   ut::equalNoCase(paper.canonicalName, name);
        });
    if (found == papers.end()) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(found - papers.begin());
}

}  // namespace cli::arguments
