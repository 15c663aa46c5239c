#include <wx/bitmap.h>
#include <wx/dcgraph.h>
#include <wx/dcmemory.h>
#include <wx/graphics.h>
#include <wx/image.h>
#include <wx/math.h>

#include <algorithm>
#include <cstddef>
#include <memory>

#include <platen/gui_images.h>
#include "gui/images/line_feeds.h"

namespace wut {
namespace {

/// Objects of the system that live until the process ends. They are never destroyed: by then
/// wxWidgets and the display are gone, which they would need for it.
template <class Object>
const Object& kept(const Object& object) {
    return *std::make_unique<Object>(object).release();
}

wxFont makeFont(int points, wxFontWeight weight) {
    wxFont font(points, wxFONTFAMILY_DEFAULT, wxFONTSTYLE_NORMAL, weight);
    font.SetPointSize(points);
    return font;
}

const wxFont& fontOf(ImageUtils::EFont font) {
    if (font == ImageUtils::EF_Small) {
        static const wxFont& normal = kept(makeFont(8, wxFONTWEIGHT_NORMAL));
        return normal;
    }
    static const wxFont& bold = kept(makeFont(11, wxFONTWEIGHT_BOLD));
    return bold;
}

const wxColour& colourOf(ImageUtils::EColor colour) {
    static const wxColour& dark = kept(wxColour(40, 40, 40));
    static const wxColour& grey = kept(wxColour(110, 110, 110));
    static const wxColour& white = kept(wxColour(255, 255, 255));
    switch (colour) {
        case ImageUtils::EC_Grey:
            return grey;
        case ImageUtils::EC_White:
            return white;
        default:
            return dark;
    }
}

/// What is left of the device to the right of a point and below it.
wxRect restOf(const wxDC& dc, int x, int y) {
    const wxSize size = dc.GetSize();
    return {x, y, size.x - x, size.y - y};
}

/// The text as it is drawn on the device: wrapped if need be, with line feeds alone.
wxString fitted(const wxString& text, const wxRect& rect, wxDC& dc) {
    const wxString lines = withLineFeeds(text);
    if (dc.GetMultiLineTextExtent(lines).x <= rect.width) {
        return lines;
    }
    return withLineFeeds(ImageUtils::wrapText(lines, rect, dc));
}

/// The bitmap in another size, what its mask hides transparent. Graphics contexts scale, too, but
/// some let the edges fade.
wxBitmap scaled(const wxBitmap& bitmap, const wxSize& size) {
    if (bitmap.GetSize() == size) {
        return bitmap;
    }
    wxImage image = bitmap.ConvertToImage();
    if (!image.HasAlpha()) {
        image.InitAlpha();
    }
    // Of the two ways to enlarge, the one that rounds colours to the nearest.
    const bool enlarges = size.x >= image.GetWidth() && size.y >= image.GetHeight();
    return wxBitmap(image.Scale(size.x, size.y,
                                enlarges ? wxIMAGE_QUALITY_BILINEAR : wxIMAGE_QUALITY_BOX_AVERAGE));
}

}  // namespace

namespace ImageUtils {

void drawOnTop(wxBitmap& bottom, const wxBitmap& top) {
    if (!bottom.IsOk() || !top.IsOk()) {
        return;
    }
    wxMemoryDC dc(bottom);
    dc.DrawBitmap(top, 0, 0, false);
}

wxString wrapText(const wxString& text, const wxRect& rect, wxDC& dc) {
    wxString rest = withLineFeeds(text);
    wxString result;
    while (!rest.empty()) {
        wxString behind;
        wxString line = rest.BeforeFirst('\n', &behind);
        rest.swap(behind);
        if (line.length() > 3 && dc.GetTextExtent(line).x > rect.width) {
            const std::size_t blank = line.find(' ', (line.length() + 1) / 2);
            if (blank != wxString::npos) {
                line[blank] = '\n';
            }
        }
        if (!result.empty()) {
            result += '\n';
        }
        result += line;
    }
    result.Replace("\n", "\r\n");
    return result;
}

void drawText(wxBitmap& bitmap, const wxString& text, int x, int y, const wxFont& font,
              const wxColour& colour) {
    if (!bitmap.IsOk()) {
        return;
    }
    wxMemoryDC dc(bitmap);
    dc.SetTextForeground(colour);
    dc.SetFont(font);
    const wxRect rect = restOf(dc, x, y);
    dc.DrawLabel(fitted(text, rect, dc), rect, wxALIGN_LEFT | wxALIGN_TOP);
}

void drawTextHighQuality(wxBitmap& bitmap, const wxString& text, int x, int y, const wxFont& font,
                         const wxColour& colour) {
    if (!bitmap.IsOk()) {
        return;
    }
    if (!bitmap.HasAlpha()) {
        wxImage image = bitmap.ConvertToImage();
        if (!image.HasAlpha()) {
            image.InitAlpha();
        }
        bitmap = wxBitmap(image, -1, 1.0);
    }
    wxMemoryDC memory(bitmap);
    if (wxGraphicsContext* const context = wxGraphicsContext::Create(memory)) {
        // Owns the context, which draws on the bitmap no later than when it is destroyed: while the
        // bitmap is still selected.
        wxGCDC dc(context);
        dc.SetTextForeground(colour);
        dc.SetFont(font);
        dc.DrawText(fitted(text, restOf(dc, x, y), dc), x, y);
    }
    memory.SelectObject(wxNullBitmap);
}

void drawText(wxBitmap& bitmap, const wxString& text, int x, int y, EFont font, EColor colour,
              bool highQuality) {
    const auto draw = highQuality ? drawTextHighQuality
                                  : static_cast<void (*)(wxBitmap&, const wxString&, int, int,
                                                         const wxFont&, const wxColour&)>(drawText);
    draw(bitmap, text, x, y, fontOf(font), colourOf(colour));
}

}  // namespace ImageUtils

wxBitmap drawOnBitmap(const wxBitmap& bottom, const wxBitmap& top, const wxSize& size) {
    if (size.x < 1 || size.y < 1 || (!bottom.IsOk() && !top.IsOk())) {
        return {};
    }
    wxImage picture(size);
    picture.InitAlpha();
    std::fill_n(picture.GetAlpha(), std::ptrdiff_t{size.x} * size.y, wxIMAGE_ALPHA_TRANSPARENT);
    // The context draws on the image no later than when it is destroyed.
    std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::Create(picture));
    if (!context) {
        return {};
    }
    if (bottom.IsOk()) {
        context->DrawBitmap(scaled(bottom, size), 0, 0, size.x, size.y);
    }
    if (top.IsOk()) {
        const double scale = std::min({1.0, static_cast<double>(size.x) / top.GetWidth(),
                                       static_cast<double>(size.y) / top.GetHeight()});
        const wxSize shown(std::max(1, wxRound(top.GetWidth() * scale)),
                           std::max(1, wxRound(top.GetHeight() * scale)));
        // At whole pixels: a top in its own size stays sharp.
        const wxSize corner = (size - shown) / 2;
        context->DrawBitmap(scaled(top, shown), corner.x, corner.y, shown.x, shown.y);
    }
    context.reset();
    return wxBitmap(picture);
}

}  // namespace wut
