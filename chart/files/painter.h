/// Scenes in cairo.
#pragma once

#include <cairo.h>

#include <platen/scene.h>

namespace platen::chart {

/// Draws a page with its white ground; a unit of the context is a millimetre.
void paint(cairo_t* context, const ScenePage& page);

}  // namespace platen::chart
