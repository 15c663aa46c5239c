/// What papers may hold although it makes no sense.
#pragma once

#include <string>
#include <vector>

#include <platen/pia.h>
#include <platen/plotcfg.h>
#include <platen/pmp.h>
#include "inspect/finding_list.h"

namespace platen {

/// The largest sides that a device takes, in millimetres or pixels; 0 for no limit.
struct PaperLimits {
    double width = 0;
    double height = 0;
};

/// The paper that `media` chooses.
void checkChosenPaper(const CMediaNode& media, const PaperLimits& limits, FindingList& findings);

/// The custom papers of the configuration in `input`.
void checkCustomPapers(const PiaInput& input, const std::vector<CustomPaperSize>& papers,
                       const PaperLimits& limits, FindingList& findings);

/// The two lists of papers in the block at `path` ("udm/media") of the PMP in `input`.
void checkPaperLists(const PiaInput& input, const std::wstring& path, const PmpSizeNode& sizes,
                     const PmpDescriptionNode& descriptions, const PaperLimits& limits,
                     FindingList& findings);

}  // namespace platen
