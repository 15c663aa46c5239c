/// Pictures as plain data: pages of rectangles, lines and text, in millimetres from a page's upper
/// left corner. Charts are scenes; SVG, HTML and JSON are written here, PNG and PDF by
/// chart_files.h, and other programs may draw them as they like.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include <platen/platen_api.h>

namespace platen {

struct SceneColor {
    /// From 0 to 255.
    ///@{
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    ///@}

    bool operator==(const SceneColor&) const = default;
};

/// How a line ends, as in SVG.
enum class SceneCap { Butt, Round, Square };
/// How lines meet in a corner, as in SVG.
enum class SceneJoin { Miter, Round, Bevel };

struct SceneStroke {
    SceneColor color;
    /// Of the line, half of it on either side.
    double width = 0;
    SceneCap cap = SceneCap::Butt;
    SceneJoin join = SceneJoin::Miter;
    /// Lengths of dashes and gaps in turn; empty for an unbroken line.
    std::vector<double> dash{};
};

struct ScenePoint {
    double x = 0;
    double y = 0;
};

struct SceneRectangle {
    /// The upper left corner.
    ///@{
    double x = 0;
    double y = 0;
    ///@}
    double width = 0;
    double height = 0;
    /// Of its corners.
    double radius = 0;
    /// Inside and outline; nothing is drawn for an absent one.
    ///@{
    std::optional<SceneColor> fill{};
    std::optional<SceneStroke> stroke{};
    ///@}
};

struct ScenePolyline {
    /// In the order in which the line goes through them.
    std::vector<ScenePoint> points;
    /// A line leads from the last point back to the first.
    bool closed = false;
    /// Inside and outline; nothing is drawn for an absent one.
    ///@{
    std::optional<SceneColor> fill{};
    std::optional<SceneStroke> stroke{};
    ///@}
};

/// What of a text stands at its place.
enum class SceneAnchor { Start, Middle, End };

/// One line of text. Whoever draws it takes any sans-serif font; its width is not known here.
struct SceneText {
    /// Where the text starts, has its middle or ends, by the anchor.
    double x = 0;
    /// Of the base line.
    double y = 0;
    /// UTF-8 without control characters.
    std::string text;
    /// The font's size.
    double size = 0;
    SceneColor color{};
    bool bold = false;
    SceneAnchor anchor = SceneAnchor::Start;
};

/// The shapes up to the end of the group belong together.
struct SceneGroup {
    /// ASCII letters, digits and hyphens; no other group of the scene has it. May be empty.
    std::string id{};
    /// What it is, for tooltips and screen readers, UTF-8.
    std::string title{};
    /// Nothing outside this rectangle is seen.
    std::optional<SceneRectangle> clip{};
};

struct SceneGroupEnd {};

using SceneShape =  ///< What a page is made of.
    std::variant<SceneRectangle, ScenePolyline, SceneText, SceneGroup, SceneGroupEnd>;

struct ScenePage {
    /// Of the sheet.
    ///@{
    double width = 0;
    double height = 0;
    ///@}
    /// Later ones cover earlier ones. Each group ends on its page.
    std::vector<SceneShape> shapes{};
};

struct Scene {
    /// UTF-8.
    std::string title;
    /// What the pages show, in a few sentences, for those who do not see them. UTF-8.
    std::string description;
    /// In the order in which they are shown.
    std::vector<ScenePage> pages;
};

/// One SVG picture at true size; several pages stand below each other.
PLATEN_API std::string sceneSvg(const Scene& scene);

/// One HTML file with the pages as SVG in it, which asks for nothing else and prints each page on a
/// sheet of its size.
PLATEN_API std::string sceneHtml(const Scene& scene);

/// One JSON object without a line feed, UTF-8, schema "platen.scene/1": the scene as it is.
PLATEN_API std::string sceneJson(const Scene& scene);

}  // namespace platen
