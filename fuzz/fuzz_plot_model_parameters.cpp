// Body text into plot model parameters and out again.

#include <cstdint>
#include <memory>
#include <utility>

#include <platen/pmp.h>
#include "fuzz/document_round_trip.h"

namespace {

std::unique_ptr<PlotModelParam> readParameters(PiaInput& input) {
    auto document = std::make_unique<PlotModelParam>();
    return document->init(input) ? std::move(document) : nullptr;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    roundTripBody({reinterpret_cast<const char*>(data), size}, readParameters);
    return 0;
}
