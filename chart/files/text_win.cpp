#include <windows.h>

#include <cstddef>
#include <string>
#include <vector>

#include <platen/utcore.h>
#include "chart/files/text_drawer.h"

namespace platen::chart {
namespace {

/// The height of letters whose outlines are taken; their points are whole numbers.
constexpr int emHeight = 2048;

struct ContextDestroyer {
    void operator()(HDC context) const { DeleteDC(context); }
};

struct FontDestroyer {
    void operator()(HFONT font) const { DeleteObject(font); }
};

using Font = std::unique_ptr<std::remove_pointer_t<HFONT>, FontDestroyer>;

Font fontOf(int weight) {
    return Font(CreateFontW(-emHeight, 0, 0, 0, weight, FALSE, FALSE, FALSE, DEFAULT_CHARSET,
                            OUT_OUTLINE_PRECIS, CLIP_DEFAULT_PRECIS, ANTIALIASED_QUALITY,
                            DEFAULT_PITCH | FF_SWISS, L"Arial"));
}

/// Appends the outlines that GDI recorded to cairo's path.
void appendPath(cairo_t* context, HDC recorded) {
    const int count = GetPath(recorded, nullptr, nullptr, 0);
    if (count <= 0) {
        return;
    }
    std::vector<POINT> points(static_cast<std::size_t>(count));
    std::vector<BYTE> kinds(static_cast<std::size_t>(count));
    if (GetPath(recorded, points.data(), kinds.data(), count) != count) {
        return;
    }
    for (std::size_t index = 0; index < points.size(); ++index) {
        const unsigned kind = kinds[index] & ~static_cast<unsigned>(PT_CLOSEFIGURE);
        const auto x = static_cast<double>(points[index].x);
        const auto y = static_cast<double>(points[index].y);
        if (kind == PT_MOVETO) {
            cairo_move_to(context, x, y);
        } else if (kind == PT_LINETO) {
            cairo_line_to(context, x, y);
        } else if (kind == PT_BEZIERTO && index + 2 < points.size()) {
            cairo_curve_to(context, x, y, static_cast<double>(points[index + 1].x),
                           static_cast<double>(points[index + 1].y),
                           static_cast<double>(points[index + 2].x),
                           static_cast<double>(points[index + 2].y));
            index += 2;
        }
        if ((kinds[index] & PT_CLOSEFIGURE) != 0) {
            cairo_close_path(context);
        }
    }
}

}  // namespace

struct TextDrawer::Parts {
    cairo_t* context;
    std::unique_ptr<std::remove_pointer_t<HDC>, ContextDestroyer> device;
    Font normal;
    Font bold;
};

TextDrawer::TextDrawer(cairo_t* context)
    : parts_(std::make_unique<Parts>(
          Parts{context,
                std::unique_ptr<std::remove_pointer_t<HDC>, ContextDestroyer>(
                    CreateCompatibleDC(nullptr)),
                fontOf(FW_NORMAL), fontOf(FW_BOLD)})) {
    SetBkMode(parts_->device.get(), TRANSPARENT);
    SetTextAlign(parts_->device.get(), TA_LEFT | TA_BASELINE);
}

TextDrawer::~TextDrawer() = default;

// The outlines of letters, so that the file needs no font and Windows chooses those that have the
// letters.
void TextDrawer::draw(const SceneText& run) {
    std::wstring text;
    if (!ut::decodeUtf8(run.text, text)) {
        return;
    }
    HDC device = parts_->device.get();
    HGDIOBJ before = SelectObject(device, run.bold ? parts_->bold.get() : parts_->normal.get());
    SIZE size{};
    const auto length = static_cast<int>(text.size());
    GetTextExtentPoint32W(device, text.c_str(), length, &size);
    BeginPath(device);
    TextOutW(device, 0, 0, text.c_str(), length);
    EndPath(device);

    const double share = run.anchor == SceneAnchor::Start    ? 0
                         : run.anchor == SceneAnchor::Middle ? 0.5
                                                             : 1;
    cairo_t* context = parts_->context;
    cairo_save(context);
    cairo_translate(context, run.x, run.y);
    cairo_scale(context, run.size / emHeight, run.size / emHeight);
    cairo_translate(context, -share * static_cast<double>(size.cx), 0);
    cairo_new_path(context);
    appendPath(context, device);
    cairo_restore(context);
    cairo_fill(context);
    AbortPath(device);
    SelectObject(device, before);
}

}  // namespace platen::chart
