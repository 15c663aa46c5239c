#include "gui/windows/displays.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace wut {
namespace {

/// How far frames of windows may overhang a display.
constexpr std::int64_t overhang = 4;

/// One dimension of a rectangle. Places of windows can be anything an int holds, so what is
/// computed from them is wider.
struct Span {
    std::int64_t start;
    std::int64_t length;

    std::int64_t last() const { return start + length - 1; }
    bool contains(std::int64_t place) const { return place >= start && place <= last(); }
};

Span horizontal(const wxRect& rect) { return {rect.x, rect.width}; }
Span vertical(const wxRect& rect) { return {rect.y, rect.height}; }

std::optional<std::size_t> displayAt(const std::vector<Display>& displays, std::int64_t x,
                                     std::int64_t y) {
    const auto found = std::ranges::find_if(displays, [&](const Display& display) {
        return horizontal(display.geometry).contains(x) && vertical(display.geometry).contains(y);
    });
    if (found == displays.end()) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(found - displays.begin());
}

std::size_t displayOf(const wxRect& rect, const Displays& displays) {
    const Span x = horizontal(rect);
    const Span y = vertical(rect);
    const auto ofCentre = displayAt(displays.all, x.start + x.length / 2, y.start + y.length / 2);
    if (ofCentre) {
        return *ofCentre;
    }
    const auto ofCorner = displayAt(displays.all, x.start, y.start);
    if (ofCorner) {
        return *ofCorner;
    }
    return displays.ofTopWindow.value_or(0);
}

int fit(Span span, Span area) {
    area = {area.start - overhang, area.length + 2 * overhang};
    span.start = std::max(span.start, area.start);
    if (span.last() > area.last()) {
        if (area.length > span.length) {
            span.start = area.length - span.length + area.start;
        } else if (span.start > area.last()) {
            span.start = area.start;
        }
    }
    return static_cast<int>(std::clamp<std::int64_t>(span.start, std::numeric_limits<int>::min(),
                                                     std::numeric_limits<int>::max()));
}

}  // namespace

wxRect fitToDisplay(const wxRect& rect, const Displays& displays, bool clientAreaOnly) {
    if (displays.all.empty()) {
        return rect;
    }
    const Display& display = displays.all[displayOf(rect, displays)];
    const wxRect& area = clientAreaOnly ? display.clientArea : display.geometry;
    return {fit(horizontal(rect), horizontal(area)), fit(vertical(rect), vertical(area)),
            rect.width, rect.height};
}

}  // namespace wut
