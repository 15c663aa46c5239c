#include <pango/pangocairo.h>

#include "chart/files/text_drawer.h"

namespace platen::chart {
namespace {

/// Fonts are laid out larger than they are drawn: their measures would be rounded otherwise.
constexpr double enlarged = 32;

struct FontDestroyer {
    void operator()(PangoFontDescription* font) const { pango_font_description_free(font); }
};

struct LayoutDestroyer {
    void operator()(PangoLayout* layout) const { g_object_unref(layout); }
};

}  // namespace

struct TextDrawer::Parts {
    cairo_t* context;
    std::unique_ptr<PangoFontDescription, FontDestroyer> font;
    std::unique_ptr<PangoLayout, LayoutDestroyer> layout;
};

TextDrawer::TextDrawer(cairo_t* context)
    : parts_(std::make_unique<Parts>(Parts{
          context,
          std::unique_ptr<PangoFontDescription, FontDestroyer>(pango_font_description_from_string(
              "Helvetica,Arial,Liberation Sans,DejaVu Sans,Sans")),
          std::unique_ptr<PangoLayout, LayoutDestroyer>(pango_cairo_create_layout(context))})) {
    cairo_font_options_t* options = cairo_font_options_create();
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
    cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
    PangoContext* pango = pango_layout_get_context(parts_->layout.get());
    pango_cairo_context_set_font_options(pango, options);
    cairo_font_options_destroy(options);
    pango_context_set_round_glyph_positions(pango, FALSE);
    pango_layout_set_single_paragraph_mode(parts_->layout.get(), TRUE);
}

TextDrawer::~TextDrawer() = default;

void TextDrawer::draw(const SceneText& run) {
    PangoLayout* layout = parts_->layout.get();
    pango_font_description_set_absolute_size(parts_->font.get(), run.size * enlarged * PANGO_SCALE);
    pango_font_description_set_weight(parts_->font.get(),
                                      run.bold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
    pango_layout_set_font_description(layout, parts_->font.get());
    pango_layout_set_text(layout, run.text.data(), static_cast<int>(run.text.size()));
    int width = 0;
    pango_layout_get_size(layout, &width, nullptr);
    const double share = run.anchor == SceneAnchor::Start    ? 0
                         : run.anchor == SceneAnchor::Middle ? 0.5
                                                             : 1;
    cairo_t* context = parts_->context;
    cairo_save(context);
    cairo_translate(context, run.x, run.y);
    cairo_scale(context, 1 / enlarged, 1 / enlarged);
    cairo_move_to(context, -share * width / PANGO_SCALE,
                  -static_cast<double>(pango_layout_get_baseline(layout)) / PANGO_SCALE);
    pango_cairo_show_layout(context, layout);
    cairo_restore(context);
}

}  // namespace platen::chart
