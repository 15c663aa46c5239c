#include <cmath>
#include <nlohmann/json.hpp>
#include <string>

#include <platen/scene.h>
#include "chart/scene_svg.h"

namespace platen {
namespace {

using Json = nlohmann::ordered_json;

double rounded(double value) {
    constexpr double thousand = 1000;
    return std::round(value * thousand) / thousand;
}

class JsonWriter {
public:
    explicit JsonWriter(Json& shapes) : shapes_(shapes) {}

    void operator()(const SceneRectangle& rectangle) {
        Json json{{"kind", "rectangle"}};
        place(json, rectangle);
        if (rectangle.radius > 0) {
            json["radius"] = rounded(rectangle.radius);
        }
        paint(json, rectangle.fill, rectangle.stroke);
        shapes_.push_back(std::move(json));
    }

    void operator()(const ScenePolyline& line) {
        Json json{{"kind", "polyline"}, {"closed", line.closed}};
        Json points = Json::array();
        for (const ScenePoint& point : line.points) {
            points.push_back({rounded(point.x), rounded(point.y)});
        }
        json["points"] = std::move(points);
        paint(json, line.fill, line.stroke);
        shapes_.push_back(std::move(json));
    }

    void operator()(const SceneText& run) {
        constexpr const char* anchors[] = {"start", "middle", "end"};
        shapes_.push_back({{"kind", "text"},
                           {"x", rounded(run.x)},
                           {"y", rounded(run.y)},
                           {"text", run.text},
                           {"size", rounded(run.size)},
                           {"color", colorInHex(run.color)},
                           {"bold", run.bold},
                           {"anchor", anchors[static_cast<std::size_t>(run.anchor)]}});
    }

    void operator()(const SceneGroup& group) {
        Json json{{"kind", "group"}, {"id", group.id}, {"title", group.title}};
        if (group.clip) {
            place(json["clip"], *group.clip);
        }
        shapes_.push_back(std::move(json));
    }

    void operator()(const SceneGroupEnd&) { shapes_.push_back({{"kind", "end"}}); }

private:
    static void place(Json& json, const SceneRectangle& rectangle) {
        json["x"] = rounded(rectangle.x);
        json["y"] = rounded(rectangle.y);
        json["width"] = rounded(rectangle.width);
        json["height"] = rounded(rectangle.height);
    }

    static void paint(Json& json, const std::optional<SceneColor>& fill,
                      const std::optional<SceneStroke>& stroke) {
        constexpr const char* caps[] = {"butt", "round", "square"};
        constexpr const char* joins[] = {"miter", "round", "bevel"};
        if (fill) {
            json["fill"] = colorInHex(*fill);
        }
        if (!stroke) {
            return;
        }
        Json dash = Json::array();
        for (const double length : stroke->dash) {
            dash.push_back(rounded(length));
        }
        json["stroke"] = {{"color", colorInHex(stroke->color)},
                          {"width", rounded(stroke->width)},
                          {"cap", caps[static_cast<std::size_t>(stroke->cap)]},
                          {"join", joins[static_cast<std::size_t>(stroke->join)]},
                          {"dash", std::move(dash)}};
    }

    Json& shapes_;
};

}  // namespace

std::string sceneJson(const Scene& scene) {
    Json json{{"schema", "platen.scene/1"},
              {"title", scene.title},
              {"description", scene.description},
              {"unit", "mm"}};
    Json pages = Json::array();
    for (const ScenePage& page : scene.pages) {
        Json shapes = Json::array();
        JsonWriter writer(shapes);
        for (const SceneShape& shape : page.shapes) {
            std::visit(writer, shape);
        }
        pages.push_back({{"width", rounded(page.width)},
                         {"height", rounded(page.height)},
                         {"shapes", std::move(shapes)}});
    }
    json["pages"] = std::move(pages);
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

}  // namespace platen
