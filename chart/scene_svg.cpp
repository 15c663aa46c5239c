#include <cstddef>
#include <string>
#include <string_view>

#include <platen/scene.h>
#include <platen/utcore.h>
#include "chart/scene_svg.h"
#include "platform/utcore/markup.h"

namespace platen {
namespace {

constexpr SceneColor white{0xFF, 0xFF, 0xFF};

class SvgWriter {
public:
    explicit SvgWriter(std::string& text) : text_(text) {}

    void operator()(const SceneRectangle& rectangle) {
        text_ += "<rect";
        place(rectangle);
        if (rectangle.radius > 0) {
            number(" rx=\"", rectangle.radius);
        }
        paint(rectangle.fill, rectangle.stroke);
        text_ += "/>\n";
    }

    void operator()(const ScenePolyline& line) {
        text_ += line.closed ? "<polygon points=\"" : "<polyline points=\"";
        for (std::size_t index = 0; index < line.points.size(); ++index) {
            text_ += index == 0 ? "" : " ";
            text_ += svgNumber(line.points[index].x);
            text_ += ',';
            text_ += svgNumber(line.points[index].y);
        }
        text_ += '"';
        paint(line.fill, line.stroke);
        text_ += "/>\n";
    }

    void operator()(const SceneText& run) {
        text_ += "<text";
        number(" x=\"", run.x);
        number(" y=\"", run.y);
        number(" font-size=\"", run.size);
        if (run.bold) {
            text_ += " font-weight=\"700\"";
        }
        if (run.anchor != SceneAnchor::Start) {
            text_ +=
                run.anchor == SceneAnchor::End ? " text-anchor=\"end\"" : " text-anchor=\"middle\"";
        }
        color(" fill=\"", run.color);
        text_ += '>';
        text_ += ut::escapeMarkup(run.text);
        text_ += "</text>\n";
    }

    void operator()(const SceneGroup& group) {
        if (group.clip) {
            const std::string id = "clip-" + std::to_string(++clips_);
            text_ += "<clipPath id=\"" + id + "\"><rect";
            place(*group.clip);
            text_ += "/></clipPath>\n<g clip-path=\"url(#" + id + ")\"";
        } else {
            text_ += "<g";
        }
        if (!group.id.empty()) {
            text_ += " id=\"" + ut::escapeMarkup(group.id) + '"';
        }
        text_ += ">\n";
        if (!group.title.empty()) {
            text_ += "<title>" + ut::escapeMarkup(group.title) + "</title>\n";
        }
    }

    void operator()(const SceneGroupEnd&) { text_ += "</g>\n"; }

private:
    void number(std::string_view before, double value) {
        text_ += before;
        text_ += svgNumber(value);
        text_ += '"';
    }

    void place(const SceneRectangle& rectangle) {
        number(" x=\"", rectangle.x);
        number(" y=\"", rectangle.y);
        number(" width=\"", rectangle.width);
        number(" height=\"", rectangle.height);
    }

    void color(std::string_view before, SceneColor value) {
        text_ += before;
        text_ += colorInHex(value);
        text_ += '"';
    }

    void paint(const std::optional<SceneColor>& fill, const std::optional<SceneStroke>& stroke) {
        if (fill) {
            color(" fill=\"", *fill);
        }
        if (!stroke) {
            return;
        }
        color(" stroke=\"", stroke->color);
        number(" stroke-width=\"", stroke->width);
        if (stroke->cap != SceneCap::Butt) {
            text_ += stroke->cap == SceneCap::Round ? " stroke-linecap=\"round\""
                                                    : " stroke-linecap=\"square\"";
        }
        if (stroke->join != SceneJoin::Miter) {
            text_ += stroke->join == SceneJoin::Round ? " stroke-linejoin=\"round\""
                                                      : " stroke-linejoin=\"bevel\"";
        }
        for (std::size_t index = 0; index < stroke->dash.size(); ++index) {
            text_ += index == 0 ? " stroke-dasharray=\"" : " ";
            text_ += svgNumber(stroke->dash[index]);
        }
        text_ += stroke->dash.empty() ? "" : "\"";
    }

    std::string& text_;
    std::size_t clips_ = 0;
};

}  // namespace

std::string svgNumber(double value) {
    constexpr int places = 3;
    return ut::formatRounded(value, places);
}

std::string colorInHex(SceneColor color) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text = "#";
    for (const std::uint8_t part : {color.red, color.green, color.blue}) {
        text += digits[part >> 4U];
        text += digits[part & 0xFU];
    }
    return text;
}

std::vector<double> pageTops(const Scene& scene, double& width, double& height) {
    constexpr double gap = 8;
    std::vector<double> tops;
    width = 0;
    height = 0;
    for (const ScenePage& page : scene.pages) {
        height += tops.empty() ? 0 : gap;
        tops.push_back(height);
        height += page.height;
        width = std::max(width, page.width);
    }
    return tops;
}

void writeSvg(std::string& text, std::span<const ScenePage> pages, std::span<const double> tops,
              const SvgHead& head) {
    constexpr std::size_t usualShape = 110;
    std::size_t shapes = 0;
    for (const ScenePage& page : pages) {
        shapes += page.shapes.size();
    }
    text.reserve(text.size() + shapes * usualShape);
    const std::string sides[] = {svgNumber(head.width), svgNumber(head.height)};
    text += "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + sides[0] + "mm\" height=\"" +
            sides[1] + "mm\" viewBox=\"0 0 " + sides[0] + ' ' + sides[1] +
            "\" role=\"img\" aria-labelledby=\"" + head.id + "-title " + head.id +
            "-description\" fill=\"none\" xml:space=\"preserve\" font-family=\"Helvetica, Arial, "
            "'Liberation Sans', 'DejaVu Sans', sans-serif\">\n<title id=\"" +
            head.id + "-title\">" + ut::escapeMarkup(head.title) + "</title>\n<desc id=\"" +
            head.id + "-description\">" + ut::escapeMarkup(head.description) + "</desc>\n";
    SvgWriter writer(text);
    if (pages.size() > 1) {
        writer(SceneRectangle{0, 0, head.width, head.height, 0, SceneColor{0xE3, 0xE7, 0xEB}});
    }
    for (std::size_t index = 0; index < pages.size(); ++index) {
        const bool moved = tops[index] != 0;
        text += moved ? "<g transform=\"translate(0 " + svgNumber(tops[index]) + ")\">\n" : "";
        writer(SceneRectangle{0, 0, pages[index].width, pages[index].height, 0, white});
        for (const SceneShape& shape : pages[index].shapes) {
            std::visit(writer, shape);
        }
        text += moved ? "</g>\n" : "";
    }
    text += "</svg>\n";
}

std::string sceneSvg(const Scene& scene) {
    SvgHead head{.id = "chart", .title = scene.title, .description = scene.description};
    const std::vector<double> tops = pageTops(scene, head.width, head.height);
    std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
    writeSvg(text, scene.pages, tops, head);
    return text;
}

}  // namespace platen
