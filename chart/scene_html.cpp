#include <cstddef>
#include <string>

#include <platen/scene.h>
#include "chart/scene_svg.h"
#include "platform/utcore/markup.h"

namespace platen {
namespace {

// Only what surrounds the sheets follows the reader's colours: paper stays white.
constexpr const char* looks = R"(
:root { color-scheme: light dark; }
body { margin: 0; padding: 8mm; background: #e3e7eb; color: #1d2733;
       font: 16px/1.5 system-ui, sans-serif; }
figure { margin: 0 auto 8mm; width: max-content; }
svg { display: block; background: #fff; box-shadow: 0 1px 8px rgb(0 0 0 / .25); }
@media (prefers-color-scheme: dark) { body { background: #1b1f24; color: #e3e7eb; } }
@media screen { svg { max-width: calc(100vw - 16mm); height: auto; } }
@media print {
  body { padding: 0; background: none; }
  figure { margin: 0; break-after: page; break-inside: avoid; }
  figure:last-child { break-after: auto; }
  svg { box-shadow: none; }
}
)";

/// Pages of one size have one name.
std::string pageName(const ScenePage& page) {
    std::string name = "s" + svgNumber(page.width) + 'x' + svgNumber(page.height);
    for (char& character : name) {
        character = character == '.' ? '-' : character;
    }
    return name;
}

}  // namespace

std::string sceneHtml(const Scene& scene) {
    std::string text =
        "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
        "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; "
        "style-src 'unsafe-inline'\">\n"
        "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>" +
        ut::escapeMarkup(scene.title) + "</title>\n<style>";
    std::string before;
    for (const ScenePage& page : scene.pages) {
        if (const std::string name = pageName(page); name != before) {
            text += "\n@page ";
            text += name;
            text += " { size: ";
            text += svgNumber(page.width);
            text += "mm ";
            text += svgNumber(page.height);
            text += "mm; margin: 0; }\n.";
            text += name;
            text += " { page: ";
            text += name;
            text += "; }";
            before = name;
        }
    }
    text += looks;
    text += "</style>\n</head>\n<body>\n<main>\n";
    for (std::size_t index = 0; index < scene.pages.size(); ++index) {
        const ScenePage& page = scene.pages[index];
        const double top = 0;
        text += "<figure class=\"" + pageName(page) + "\">\n";
        const std::string number = std::to_string(index + 1);
        writeSvg(text, {&page, 1}, {&top, 1},
                 {.id = "page-" + number,
                  .title = scene.title + (scene.pages.size() > 1 ? ", page " + number : ""),
                  .description = scene.description,
                  .width = page.width,
                  .height = page.height});
        text += "</figure>\n";
    }
    return text + "</main>\n</body>\n</html>\n";
}

}  // namespace platen
