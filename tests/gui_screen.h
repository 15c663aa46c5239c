/// What people would see on the display of the tests.
#pragma once

#include <gtest/gtest.h>
#include <wx/gdicmn.h>
#include <wx/image.h>
#include <wx/platinfo.h>

#include <algorithm>
#include <cstddef>

#include "tests/support/gui.h"
#include "utcore.h"

inline bool onWindows() { return wxPlatformInfo::Get().GetOperatingSystemId() & wxOS_WINDOWS; }

/// What the whole display shows, with what its window manager adds: the X window dump that
/// scripts/display.sh tells the place of.
inline wxImage display() {
    wxString path;
    wxGetEnv("PLATEN_TEST_SCREEN", &path);
    if (onWindows()) {
        path = "Z:" + path;
    }
    ut::ByteBuffer dump;
    bool tooLarge = false;
    EXPECT_FALSE(ut::readFile(path.ToStdWstring(), 1 << 28, dump, tooLarge)) << path;
    const auto byte = [&](std::size_t at) {
        return static_cast<unsigned char>(dump.view().at(at));
    };
    const auto field = [&](std::size_t index) {
        std::size_t value = 0;
        for (std::size_t at = index * 4; at < index * 4 + 4; ++at) {
            value = value << 8 | byte(at);
        }
        return value;
    };
    const std::size_t width = field(4);
    const std::size_t height = field(5);
    const std::size_t lineLength = field(12);
    // The header, and twelve bytes for each colour of a palette.
    const std::size_t start = field(0) + field(19) * 12;
    wxImage image(static_cast<int>(width), static_cast<int>(height));
    unsigned char* target = image.GetData();
    for (std::size_t y = 0; y < height; ++y) {
        for (std::size_t x = 0; x < width; ++x) {
            const std::size_t pixel = start + y * lineLength + x * 4;
            for (const std::size_t channel : {2u, 1u, 0u}) {
                *target++ = byte(pixel + channel);
            }
        }
    }
    return image;
}

/// The smallest rectangle with everything that differs.
inline wxRect difference(const wxImage& one, const wxImage& other) {
    wxRect changed;
    for (int y = 0; y < one.GetHeight(); ++y) {
        for (int x = 0; x < one.GetWidth(); ++x) {
            const auto at = static_cast<std::size_t>(y * one.GetWidth() + x) * 3;
            if (!std::equal(one.GetData() + at, one.GetData() + at + 3, other.GetData() + at)) {
                changed.Union(wxRect(x, y, 1, 1));
            }
        }
    }
    return changed;
}

/// True when nothing differs, or only what a caret is that blinks.
inline bool alike(const wxImage& one, const wxImage& other) {
    const wxRect changed = difference(one, other);
    return changed.GetWidth() <= 2 && changed.GetHeight() <= 40;
}

/// What the display shows once nothing moves any more.
inline wxImage settledDisplay() {
    wxImage last = display();
    int quiet = 0;
    for (int tries = 0; tries < 100 && quiet < 3; ++tries) {
        settle();
        wxMilliSleep(100);
        const wxImage now = display();
        quiet = alike(last, now) ? quiet + 1 : 0;
        last = now;
    }
    return last;
}
