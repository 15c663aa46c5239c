// Windows are moved onto displays.
#include <gtest/gtest.h>
#include <wx/display.h>
#include <wx/frame.h>

#include <limits>
#include <utility>
#include <vector>

#include <platen/gui_windows.h>
#include "gui/windows/displays.h"
#include "tests/gui/support/gui.h"

namespace {

constexpr int lowest = std::numeric_limits<int>::min();
constexpr int highest = std::numeric_limits<int>::max();

struct Case {
    const char* what;
    wut::Displays displays;
    wxRect rect;
    wxPoint expected;
    bool clientAreaOnly = false;
};

wut::Display plain(int x, int y, int width, int height) {
    const wxRect geometry(x, y, width, height);
    return {geometry, geometry};
}

const wut::Displays none;
const wut::Displays one{{plain(0, 0, 1920, 1080)}, {}};
const wut::Displays barBelow{{{{0, 0, 1920, 1080}, {0, 0, 1920, 1040}}}, {}};
const wut::Displays barsLeftAndAbove{{{{0, 0, 1920, 1080}, {60, 30, 1860, 1050}}}, {}};
const wut::Displays two{{plain(0, 0, 1920, 1080), plain(1920, 0, 1280, 1024)}, {}};
const wut::Displays mainRight{{plain(0, 0, 1920, 1080), plain(-1280, 0, 1280, 500)}, {}};
const wut::Displays apart{{plain(0, 0, 1000, 800), plain(1500, 0, 1000, 800)}, {}};
const wut::Displays apartTopOnSecond{apart.all, 1};
const wut::Displays atHighest{{plain(highest - 999, 0, 1000, 1000)}, {}};
const wut::Displays atLowest{{plain(lowest, 0, 1000, 1000)}, {}};

const Case cases[] = {
    {"beyond the right edge", one, {1800, 100, 400, 300}, {1524, 100}, true},
    {"overhanging too far", one, {-5, -5, 400, 300}, {-4, -4}},
    {"overhanging too far there", one, {1525, 785, 400, 300}, {1524, 784}},
    {"outside", one, {5000, -9000, 400, 300}, {1524, -4}},
    {"wider", one, {50, 100, 2000, 300}, {50, 100}},
    {"wider, left on the right edge", one, {1923, 100, 2000, 300}, {1923, 100}},
    {"wider, left beyond the right edge", one, {1924, 100, 2000, 300}, {-4, 100}},
    {"exactly as wide", one, {10, 100, 1928, 300}, {10, 100}},
    {"nearly as wide", one, {10, 100, 1927, 300}, {-3, 100}},
    {"a task bar counts", barBelow, {100, 1000, 400, 300}, {100, 744}, true},
    {"the task bar's display is chosen", barsLeftAndAbove, {0, 0, 20, 20}, {56, 26}, true},
    {"half a width is rounded down", two, {1718, 100, 403, 300}, {1521, 100}},
    {"the next pixel", two, {1719, 100, 403, 300}, {1916, 100}},
    {"half a width left of zero", mainRight, {-202, 100, 403, 300}, {-399, 100}},
    {"half a negative width", mainRight, {201, 350, -403, 200}, {201, 350}},
    {"centre between, corner on the first", apart, {900, 100, 400, 300}, {604, 100}},
    {"between, no top window", apart, {1100, 100, 200, 300}, {804, 100}},
    {"between, top window on the second", apartTopOnSecond, {1100, 100, 200, 300}, {1496, 100}},
    {"the top window's only when needed", apartTopOnSecond, {900, 100, 400, 300}, {604, 100}},
    {"no displays", none, {-70000, 100, 400, 300}, {-70000, 100}},
    {"far right", one, {highest, highest, 400, 300}, {1524, 784}},
    {"largest", one, {highest, highest, highest, highest}, {-4, -4}},
    {"the last display there can be", atHighest, {highest - 100, 0, 400, 300}, {highest - 395, 0}},
    {"left of all coordinates", atLowest, {highest, 0, 2000, 300}, {lowest, 0}},
};

wxRect turned(const wxRect& rect) { return {rect.y, rect.x, rect.height, rect.width}; }

wut::Displays turned(wut::Displays displays) {
    for (wut::Display& display : displays.all) {
        display = {turned(display.geometry), turned(display.clientArea)};
    }
    return displays;
}

TEST(DisplayFit, MovesOntoOneDisplay) {
    for (const Case& test : cases) {
        const wxRect result = wut::fitToDisplay(test.rect, test.displays, test.clientAreaOnly);
        EXPECT_EQ(result, wxRect(test.expected, test.rect.GetSize()))
            << test.what << ": " << result.x << ", " << result.y;
        // Displays side by side become displays one above the other.
        EXPECT_EQ(wut::fitToDisplay(turned(test.rect), turned(test.displays), test.clientAreaOnly),
                  turned(result))
            << test.what;
    }
}

TEST(DisplayFit, AsksTheSystemForItsDisplays) {
    const wxRect geometry = wxDisplay(0u).GetGeometry();
    wxRect rect(geometry.GetRight() - 50, geometry.y + 70, 400, 300);
    wut::adjustWindowRectangleToDisplay(rect, false);
    EXPECT_EQ(rect, wxRect(geometry.GetRight() + 5 - 400, geometry.y + 70, 400, 300));
    settle();
    EXPECT_EQ(wut::systemDisplays().ofTopWindow, std::nullopt);
    wxFrame frame(nullptr, wxID_ANY, "Top", wxPoint(50, 60), wxSize(300, 200));
    frame.Show();
    settle();
    EXPECT_EQ(wut::systemDisplays().ofTopWindow, 0u);
}

}  // namespace
