#include "chart/sheet.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "chart/text_fit.h"

namespace platen::chart {
namespace {

constexpr double wideSheet = 250;
constexpr double lineHeight = 1.35;
constexpr double signWidth = 6;
constexpr double signHeight = 2.6;
constexpr double barHeight = 1.4;

/// Sizes of a frame, which are smaller on small sheets.
struct Sizes {
    double margin;
    double title;
    double subtitle;
    double small;
};

Sizes sizesOn(const ChartSheet& sheet) {
    return std::max(sheet.width, sheet.height) > wideSheet ? Sizes{9, 5.4, 3.2, 2.3}
                                                           : Sizes{7, 4.4, 2.7, 2.1};
}

std::vector<std::string> linesOf(const std::vector<std::string>& sentences, double width,
                                 double size) {
    constexpr std::size_t most = 3;
    std::vector<std::string> lines;
    for (const std::string& sentence : sentences) {
        for (std::string& line : wrapped(sentence, width, size, most)) {
            lines.push_back(std::move(line));
        }
    }
    return lines;
}

double headHeight(const Frame& frame, const Sizes& sizes, double width) {
    const auto lines =
        static_cast<double>(wrapped(frame.heading.subtitle, width, sizes.subtitle, 2).size());
    const auto notes = static_cast<double>(linesOf(frame.heading.notes, width, sizes.small).size());
    return sizes.title * 1.3 + lines * sizes.subtitle * lineHeight +
           notes * sizes.small * lineHeight + 2.5;
}

/// Where each sign of the key goes, in lines from left to right.
std::vector<ScenePoint> placesOfKey(const Frame& frame, const Sizes& sizes, double width,
                                    double& height) {
    constexpr double between = 5;
    std::vector<ScenePoint> places;
    double x = 0;
    double y = 0;
    for (const KeySign& sign : frame.key) {
        const double needed = signWidth + 1.5 + textWidth(sign.words, sizes.small);
        if (x > 0 && x + needed > width) {
            x = 0;
            y += signHeight + 1.4;
        }
        places.push_back({x, y});
        x += needed + between;
    }
    height = frame.key.empty() ? 0 : y + signHeight + 1.4;
    return places;
}

double footHeight(const Frame& frame, const Sizes& sizes, double width) {
    double key = 0;
    placesOfKey(frame, sizes, width, key);
    const auto lines = static_cast<double>(linesOf(frame.explanations, width, sizes.small).size());
    return 3 + key + lines * sizes.small * lineHeight + 1.5 + barHeight + sizes.small * lineHeight;
}

void drawBar(Pencil& pencil, const ScaleBar& bar, double x, double y, double small) {
    constexpr int parts = 10;
    const double part = bar.length / parts;
    for (int index = 0; index < parts; ++index) {
        pencil.rectangle({x + part * index, y, part, barHeight, 0, index % 2 == 0 ? ink : white});
    }
    pencil.rectangle({.x = x,
                      .y = y,
                      .width = bar.length,
                      .height = barHeight,
                      .stroke = SceneStroke{ink, 0.15}});
    const double below = y + barHeight + small * 1.05;
    pencil.text(x, below, small, "0", quiet);
    pencil.text(x + bar.length, below, small, bar.label, quiet, false, SceneAnchor::End);
}

}  // namespace

void Pencil::text(double x, double y, double size, std::string_view words, SceneColor color,
                  bool bold, SceneAnchor anchor) {
    if (!words.empty()) {
        page_.shapes.emplace_back(SceneText{x, y, std::string(words), size, color, bold, anchor});
    }
}

void Pencil::line(ScenePoint from, ScenePoint to, SceneStroke stroke) {
    page_.shapes.emplace_back(ScenePolyline{.points = {from, to}, .stroke = std::move(stroke)});
}

void Pencil::polygon(std::vector<ScenePoint> points, SceneColor fill) {
    page_.shapes.emplace_back(
        ScenePolyline{.points = std::move(points), .closed = true, .fill = fill});
}

Room roomIn(const Frame& frame, const ChartSheet& sheet) {
    const Sizes sizes = sizesOn(sheet);
    const double width = sheet.width - 2 * sizes.margin;
    return {sizes.margin, sizes.margin + headHeight(frame, sizes, width),
            sheet.width - sizes.margin,
            sheet.height - sizes.margin - footHeight(frame, sizes, width)};
}

ScenePage framedPage(const Frame& frame, const ChartSheet& sheet, std::size_t number,
                     std::size_t count) {
    const Sizes sizes = sizesOn(sheet);
    const Room room = roomIn(frame, sheet);
    ScenePage page{sheet.width, sheet.height, {}};
    Pencil pencil(page);

    double y = sizes.margin + sizes.title;
    pencil.text(room.left, y, sizes.title,
                fitted(frame.heading.title, room.width(), sizes.title, true), ink, true);
    y += sizes.title * 0.3;
    for (const std::string& line :
         wrapped(frame.heading.subtitle, room.width(), sizes.subtitle, 2)) {
        y += sizes.subtitle * lineHeight;
        pencil.text(room.left, y, sizes.subtitle, line, quiet);
    }
    for (const std::string& line : linesOf(frame.heading.notes, room.width(), sizes.small)) {
        y += sizes.small * lineHeight;
        pencil.text(room.left, y, sizes.small, line, notable);
    }

    y = room.bottom + 3;
    pencil.line({room.left, y - 1.4}, {room.right, y - 1.4}, {hairline, 0.2});
    double keyHeight = 0;
    const std::vector<ScenePoint> places = placesOfKey(frame, sizes, room.width(), keyHeight);
    for (std::size_t index = 0; index < places.size(); ++index) {
        const SceneRectangle place{room.left + places[index].x, y + places[index].y, signWidth,
                                   signHeight};
        drawSign(pencil, frame.key[index].picture, place);
        pencil.text(
            place.x + signWidth + 1.5, place.y + signHeight * 0.5 + sizes.small * 0.36, sizes.small,
            fitted(frame.key[index].words, room.right - place.x - signWidth - 1.5, sizes.small),
            quiet);
    }
    y += keyHeight;
    for (const std::string& line : linesOf(frame.explanations, room.width(), sizes.small)) {
        y += sizes.small * lineHeight;
        pencil.text(room.left, y - sizes.small * 0.3, sizes.small, line, quiet);
    }
    y += 1.5;
    drawBar(pencil, frame.bar, room.left, y, sizes.small);
    const double beside = room.left + frame.bar.length + 3;
    const std::string pageWords =
        count > 1 ? "Page " + std::to_string(number) + " of " + std::to_string(count) : "";
    const double pageWidth = textWidth(pageWords, sizes.small);
    const std::vector<std::string> words =
        wrapped(frame.bar.words, room.right - beside - pageWidth - 3, sizes.small, 2);
    for (std::size_t index = 0; index < words.size(); ++index) {
        pencil.text(beside, y + barHeight + static_cast<double>(index) * sizes.small * lineHeight,
                    sizes.small, words[index], quiet);
    }
    pencil.text(room.right, y + barHeight, sizes.small, pageWords, quiet, false, SceneAnchor::End);
    return page;
}

void drawObjectColor(Pencil& pencil, const SceneRectangle& place, SceneColor color) {
    pencil.polygon({{place.x, place.y + place.height},
                    {place.x + place.width, place.y},
                    {place.x + place.width, place.y + place.height}},
                   color);
    SceneRectangle around = place;
    around.stroke = SceneStroke{outline, 0.15};
    pencil.rectangle(around);
}

void drawWedge(Pencil& pencil, const SceneRectangle& place, SceneColor color) {
    constexpr double thin = 0.05;
    const double middle = place.y + place.height / 2;
    const double thick = std::min(place.height, 0.9) / 2;
    pencil.polygon({{place.x, middle - thin},
                    {place.x + place.width, middle - thick},
                    {place.x + place.width, middle + thick},
                    {place.x, middle + thin}},
                   color);
}

void drawSign(Pencil& pencil, KeySign::Picture picture, const SceneRectangle& place) {
    SceneRectangle sheet = place;
    switch (picture) {
        case KeySign::Picture::ObjectColor:
            drawObjectColor(pencil, place, outline);
            return;
        case KeySign::Picture::ObjectWeight:
            drawWedge(pencil, place, ink);
            return;
        case KeySign::Picture::Chosen:
            sheet.fill = white;
            sheet.stroke = SceneStroke{accent, 0.6};
            break;
        case KeySign::Picture::Custom:
            sheet.fill = white;
            sheet.stroke = SceneStroke{ink, 0.3};
            break;
        case KeySign::Picture::Device:
            sheet.fill = white;
            sheet.stroke = SceneStroke{outline, 0.2};
            break;
        case KeySign::Picture::Printable:
            sheet.fill = SceneColor{0xDD, 0xE4, 0xEB};
            pencil.rectangle(sheet);
            sheet = {
                .x = place.x + 0.7,
                .y = place.y + 0.5,
                .width = place.width - 1.4,
                .height = place.height - 1,
                .fill = white,
                .stroke = SceneStroke{quiet, 0.15, SceneCap::Butt, SceneJoin::Miter, {0.8, 0.5}}};
            break;
    }
    pencil.rectangle(sheet);
}

}  // namespace platen::chart
