/// What cairo gives out, with its destructors.
#pragma once

#include <cairo-pdf.h>
#include <cairo.h>

#include <memory>

namespace platen::chart {

struct CairoDestroyer {
    void operator()(cairo_t* context) const { cairo_destroy(context); }
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};

using CairoContext = std::unique_ptr<cairo_t, CairoDestroyer>;
using CairoSurface = std::unique_ptr<cairo_surface_t, CairoDestroyer>;

}  // namespace platen::chart
