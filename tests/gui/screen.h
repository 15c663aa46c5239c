/// What people would see on the display of the tests.
#pragma once

#include <gtest/gtest.h>
#include <wx/bitmap.h>
#include <wx/dcmemory.h>
#include <wx/dcscreen.h>
#include <wx/gdicmn.h>
#include <wx/image.h>
#include <wx/platinfo.h>
#include <wx/window.h>

#include <algorithm>
#include <cstddef>

#include "tests/gui/support/gui.h"
#include "tests/support/files.h"

inline bool onWindows() { return wxPlatformInfo::Get().GetOperatingSystemId() & wxOS_WINDOWS; }

/// What the whole display shows, with what its window manager adds: the X window dump that
/// scripts/display.sh tells the place of, or on a display of somebody's own what the system copies.
inline wxImage display() {
    wxString path;
    if (!wxGetEnv("PLATEN_TEST_SCREEN", &path)) {
        wxScreenDC screen;
        wxBitmap copy(screen.GetSize());
        wxMemoryDC(copy).Blit(wxPoint(), screen.GetSize(), &screen, wxPoint());
        return copy.ConvertToImage();
    }
    const std::string dump = readBytes((onWindows() ? "Z:" + path : path).utf8_string());
    const auto byteAt = [&](std::size_t at) { return static_cast<unsigned char>(dump.at(at)); };
    const auto field = [&](std::size_t index) {
        const std::size_t at = index * 4;
        return byteAt(at) << 24 | byteAt(at + 1) << 16 | byteAt(at + 2) << 8 | byteAt(at + 3);
    };
    wxImage image(field(4), field(5));
    const int lineLength = field(12);
    // The header, and twelve bytes for each colour of a palette.
    const int start = field(0) + field(19) * 12;
    unsigned char* target = image.GetData();
    for (int at = 0; at < field(4) * field(5); ++at) {
        const int from = start + at / field(4) * lineLength + at % field(4) * 4;
        for (const int channel : {2, 1, 0}) {
            *target++ = byteAt(static_cast<std::size_t>(from + channel));
        }
    }
    return image;
}

/// The smallest rectangle with everything that differs.
inline wxRect difference(const wxImage& one, const wxImage& other) {
    wxRect changed;
    for (int at = 0; at < one.GetWidth() * one.GetHeight(); ++at) {
        const unsigned char* const pixel = one.GetData() + at * 3;
        if (!std::equal(pixel, pixel + 3, other.GetData() + at * 3)) {
            changed.Union(wxRect(at % one.GetWidth(), at / one.GetWidth(), 1, 1));
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

/// What is shown where the window is, with its frame and what covers it.
inline wxImage displayed(const wxWindow& window) {
    return settledDisplay().GetSubImage(window.GetScreenRect());
}
