/// A page of a chart in the making, and what every page has: heading, scale bar, key.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include <platen/chart.h>
#include "chart/colors.h"

namespace platen::chart {

/// Draws shapes.
class Pencil {
public:
    explicit Pencil(ScenePage& page) : page_(page) {}

    void text(double x, double y, double size, std::string_view words, SceneColor color = ink,
              bool bold = false, SceneAnchor anchor = SceneAnchor::Start);
    void rectangle(SceneRectangle shape) { page_.shapes.emplace_back(std::move(shape)); }
    void line(ScenePoint from, ScenePoint to, SceneStroke stroke);
    void polygon(std::vector<ScenePoint> points, SceneColor fill);
    void begin(SceneGroup group) { page_.shapes.emplace_back(std::move(group)); }
    void end() { page_.shapes.emplace_back(SceneGroupEnd{}); }

private:
    ScenePage& page_;
};

/// A length that a print can be measured by.
struct ScaleBar {
    /// On the page.
    double length = 0;
    /// What its end says: "100 mm".
    std::string label;
    /// Beside it.
    std::string words;
};

/// A sign that the key explains.
struct KeySign {
    enum class Picture { ObjectColor, ObjectWeight, Chosen, Custom, Device, Printable };
    Picture picture;
    std::string words;
};

struct Heading {
    std::string title;
    std::string subtitle;
    /// Sentences below it.
    std::vector<std::string> notes;
};

/// What stands around the content of a page.
struct Frame {
    Heading heading;
    ScaleBar bar;
    std::vector<KeySign> key;
    std::vector<std::string> explanations;
};

/// The room between heading and foot.
struct Room {
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;

    double width() const { return right - left; }
    double height() const { return bottom - top; }
};

/// How much room the frame leaves on a sheet.
Room roomIn(const Frame& frame, const ChartSheet& sheet);

/// A page with its frame. `number` and `count` tell several pages from each other.
ScenePage framedPage(const Frame& frame, const ChartSheet& sheet, std::size_t number,
                     std::size_t count);

/// The sign of a colour that is the drawn object's own.
void drawObjectColor(Pencil& pencil, const SceneRectangle& place, SceneColor color);
/// The sign of a weight that is the drawn object's own: from thin to thick.
void drawWedge(Pencil& pencil, const SceneRectangle& place, SceneColor color);
void drawSign(Pencil& pencil, KeySign::Picture picture, const SceneRectangle& place);

/// The sheet of the options, turned as they say; nothing when they leave it open.
std::optional<ChartSheet> chosenSheet(const ChartOptions& options);
/// Sheets that are tried in turn, from A6 to A3, turned as the options say.
std::vector<ChartSheet> usualSheets(const ChartOptions& options);

}  // namespace platen::chart
