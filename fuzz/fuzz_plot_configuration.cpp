// Body text into a plot configuration and out again, and its papers through a PMP and back.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include <platen/plotcfg.h>
#include "fuzz/document_round_trip.h"

namespace {

std::unique_ptr<CPlotCfg3> readConfiguration(PiaInput& input) {
    bool printerChanged = false;
    std::unique_ptr<CPlotCfg3> config = CPlotCfg3::fromInput(input, printerChanged);
    if (config) {
        // These are left out although their absence means another number.
        CResColorMemNode& device = config->resColorMem;
        device.preference = device.preference == 0 ? 50 : device.preference;
        device.ismMax = device.ismMax == -1 ? 6 : device.ismMax;
        device.oleMax = device.oleMax == -1 ? 6 : device.oleMax;
    }
    return config;
}

/// Papers go through the lists of a PMP and back.
void editPapers(PiaInput& input) {
    if (const auto config = readConfiguration(input)) {
        std::vector<CustomPaperSize> papers;
        config->getCustomPaperSizes(papers);
        for (CustomPaperSize& paper : papers) {
            paper.source = 1;
        }
        config->setCustomPaperSizes(papers);
        std::vector<CustomPaperSize> again;
        config->getCustomPaperSizes(again);
        require(again.size() == papers.size());
        bool changed = false;
        for (std::size_t index = 0; index < 4; ++index) {
            config->setPaperSize(index, true, changed);
        }
        const CPlotCfg3 copy(*config);
        config->detachPMP();
        copy.getCustomPaperSizes(papers);
        require(papers.size() == again.size());
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view body(reinterpret_cast<const char*>(data), size);
    roundTripBody(body, readConfiguration);
    PiaInput input;
    if (chosen(body, 4) && input.openBody(body)) {
        editPapers(input);
    }
    return 0;
}
