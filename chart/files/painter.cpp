#include "chart/files/painter.h"

#include <algorithm>
#include <cstddef>
#include <numbers>
#include <variant>

#include "chart/files/text_drawer.h"

namespace platen::chart {
namespace {

class Painter {
public:
    explicit Painter(cairo_t* context) : context_(context), text_(context) {}

    void operator()(const SceneRectangle& rectangle) {
        outline(rectangle);
        fillAndStroke(rectangle.fill, rectangle.stroke);
    }

    void operator()(const ScenePolyline& line) {
        cairo_new_path(context_);
        for (const ScenePoint& point : line.points) {
            cairo_line_to(context_, point.x, point.y);
        }
        if (line.closed) {
            cairo_close_path(context_);
        }
        fillAndStroke(line.fill, line.stroke);
    }

    void operator()(const SceneText& run) {
        take(run.color);
        text_.draw(run);
    }

    void operator()(const SceneGroup& group) {
        cairo_save(context_);
        if (group.clip) {
            outline(*group.clip);
            cairo_clip(context_);
        }
    }

    void operator()(const SceneGroupEnd&) { cairo_restore(context_); }

private:
    void outline(const SceneRectangle& rectangle) {
        // Text leaves a point behind.
        cairo_new_path(context_);
        const double radius =
            std::min({rectangle.radius, rectangle.width / 2, rectangle.height / 2});
        if (radius <= 0) {
            cairo_rectangle(context_, rectangle.x, rectangle.y, rectangle.width, rectangle.height);
            return;
        }
        constexpr double quarter = std::numbers::pi / 2;
        const double left = rectangle.x + radius;
        const double top = rectangle.y + radius;
        const double right = rectangle.x + rectangle.width - radius;
        const double bottom = rectangle.y + rectangle.height - radius;
        cairo_new_sub_path(context_);
        cairo_arc(context_, right, top, radius, -quarter, 0);
        cairo_arc(context_, right, bottom, radius, 0, quarter);
        cairo_arc(context_, left, bottom, radius, quarter, 2 * quarter);
        cairo_arc(context_, left, top, radius, 2 * quarter, 3 * quarter);
        cairo_close_path(context_);
    }

    void fillAndStroke(const std::optional<SceneColor>& fill,
                       const std::optional<SceneStroke>& stroke) {
        constexpr cairo_line_cap_t caps[] = {CAIRO_LINE_CAP_BUTT, CAIRO_LINE_CAP_ROUND,
                                             CAIRO_LINE_CAP_SQUARE};
        constexpr cairo_line_join_t joins[] = {CAIRO_LINE_JOIN_MITER, CAIRO_LINE_JOIN_ROUND,
                                               CAIRO_LINE_JOIN_BEVEL};
        if (fill) {
            take(*fill);
            cairo_fill_preserve(context_);
        }
        if (stroke) {
            take(stroke->color);
            cairo_set_line_width(context_, stroke->width);
            cairo_set_line_cap(context_, caps[static_cast<std::size_t>(stroke->cap)]);
            cairo_set_line_join(context_, joins[static_cast<std::size_t>(stroke->join)]);
            cairo_set_dash(context_, stroke->dash.data(), static_cast<int>(stroke->dash.size()), 0);
            cairo_stroke_preserve(context_);
        }
        cairo_new_path(context_);
    }

    void take(SceneColor color) {
        constexpr double brightest = 255;
        cairo_set_source_rgb(context_, color.red / brightest, color.green / brightest,
                             color.blue / brightest);
    }

    cairo_t* context_;
    TextDrawer text_;
};

}  // namespace

void paint(cairo_t* context, const ScenePage& page) {
    cairo_save(context);
    Painter painter(context);
    painter(SceneRectangle{0, 0, page.width, page.height, 0, SceneColor{0xFF, 0xFF, 0xFF}});
    for (const SceneShape& shape : page.shapes) {
        std::visit(painter, shape);
    }
    cairo_restore(context);
}

}  // namespace platen::chart
