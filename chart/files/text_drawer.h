/// Text in the fonts of the system.
#pragma once

#include <cairo.h>

#include <memory>

#include <platen/scene.h>

namespace platen::chart {

/// Draws lines of text into one cairo context: letters of all scripts, each in a font that has
/// them, in the order in which they are read.
class TextDrawer {
public:
    /// Borrows the context.
    explicit TextDrawer(cairo_t* context);
    TextDrawer(const TextDrawer&) = delete;
    TextDrawer& operator=(const TextDrawer&) = delete;
    ~TextDrawer();

    void draw(const SceneText& run);

private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

}  // namespace platen::chart
