/// The parts of SVG that an HTML file holds as well.
#pragma once

#include <span>
#include <string>
#include <vector>

#include <platen/scene.h>

namespace platen {

/// At most three digits after the point.
std::string svgNumber(double value);
/// "#rrggbb"
std::string colorInHex(SceneColor color);

/// Where each page begins when they stand below each other, and the sides of the whole.
PLATEN_API std::vector<double> pageTops(const Scene& scene, double& width, double& height);

struct SvgHead {
    /// Begins the ids of its title and description.
    std::string id;
    std::string title;
    std::string description;
    double width = 0;
    double height = 0;
};

/// Appends an "svg" element with these pages.
void writeSvg(std::string& text, std::span<const ScenePage> pages, std::span<const double> tops,
              const SvgHead& head);

}  // namespace platen
