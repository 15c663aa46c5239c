#include <algorithm>
#include <tuple>
#include <utility>

#include <platen/pia.h>
#include <platen/plotstyle.h>
#include <platen/utcore.h>
#include "plotstyle/index_name.h"
#include "plotstyle/style_keys.h"
#include "plotstyle/style_settings.h"

namespace {

std::int32_t withBit(std::int32_t bits, std::int32_t bit, bool set) {
    return set ? bits | bit : bits & ~bit;
}

}  // namespace

void CPlotStyle::setDither(bool dither) { colorPolicy_ = withBit(colorPolicy_, ditherBit, dither); }

void CPlotStyle::setGrayScale(bool grayScale) {
    colorPolicy_ = withBit(colorPolicy_, grayScaleBit, grayScale);
}

bool CPlotStyle::init(const PiaBlock& block) { return node_keys::read(block, *this); }

bool CPlotStyle::write(PiaBlock& parent, int index, bool writeModeColor) const {
    return writeTo(parent, index, writeModeColor);
}

bool CPlotStyle::writeTo(PiaSink& parent, int index, bool writeModeColor) const {
    PiaSink* block = parent.addBlock(plot_style::IndexName(index).view());
    return block != nullptr &&
           NodeCodec<CPlotStyle>::write(*this, *block, [&](const NodeKey<CPlotStyle>& key) {
               return writeModeColor || key.options.presence == KeyPresence::Required;
           });
}

bool CPlotStyle::isEqual(const CPlotStyle& other, bool compareDescription) const {
    return (!compareDescription || description_ == other.description_) &&
           plot_style::settingsOf(*this) == plot_style::settingsOf(other);
}

void CPlotStyle::updateName(const wchar_t* name) {
    // The text may be this style's own.
    std::wstring localized = name;
    name_ = localized;
    std::replace_if(name_.begin(), name_.end(), ut::isSpace, L'_');
    localizedName_ = std::move(localized);
}

bool CPlotStyle::read(ut::CIBinStream& stream) {
    CPlotStyle style;
    const auto readAll = [&](auto... member) { return (stream.read(style.*member) && ...); };
    if (!std::apply(readAll, NodeKeys<CPlotStyle>::streamed)) {
        return false;
    }
    *this = std::move(style);
    return true;
}

bool CPlotStyle::write(ut::COBinStream& stream) const {
    std::apply([&](auto... member) { (stream.write(this->*member), ...); },
               NodeKeys<CPlotStyle>::streamed);
    return true;
}
