#include <zlib.h>

#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <platen/chart_files.h>
#include "chart/files/cairo_handles.h"
#include "chart/files/painter.h"
#include "chart/scene_svg.h"

namespace platen {
namespace {

constexpr double millimetresPerInch = 25.4;

cairo_status_t append(void* bytes, const unsigned char* data, unsigned int length) {
    static_cast<std::string*>(bytes)->append(reinterpret_cast<const char*>(data), length);
    return CAIRO_STATUS_SUCCESS;
}

void appendNumber(std::string& bytes, std::uint32_t number) {
    for (const unsigned shift : {24U, 16U, 8U, 0U}) {
        bytes += static_cast<char>(number >> shift & 0xFFU);
    }
}

/// The chunk that tells how large a pixel is, so that the picture has its size.
std::string chunkOfResolution(double resolution) {
    constexpr double metre = 1000;
    const auto perMetre =
        static_cast<std::uint32_t>(std::lround(resolution / millimetresPerInch * metre));
    std::string content = "pHYs";
    appendNumber(content, perMetre);
    appendNumber(content, perMetre);
    content += '\1';
    std::string chunk;
    appendNumber(chunk, static_cast<std::uint32_t>(content.size() - 4));
    chunk += content;
    appendNumber(chunk,
                 static_cast<std::uint32_t>(crc32(0, reinterpret_cast<const Bytef*>(content.data()),
                                                  static_cast<uInt>(content.size()))));
    return chunk;
}

}  // namespace

SceneFile scenePng(const Scene& scene, double resolution) {
    constexpr double mostSide = 32767;
    double width = 0;
    double height = 0;
    const std::vector<double> tops = pageTops(scene, width, height);
    const double scale = resolution / millimetresPerInch;
    const double columns = std::max(1.0, std::round(width * scale));
    const double rows = std::max(1.0, std::round(height * scale));
    if (!(std::max(columns, rows) <= mostSide && columns * rows <= mostPixels)) {
        return {.fault =
                    "the picture would have more than 100 million pixels or 32767 on a side; "
                    "choose a lower resolution, a smaller sheet or PDF"};
    }
    const chart::CairoSurface surface(cairo_image_surface_create(
        CAIRO_FORMAT_RGB24, static_cast<int>(columns), static_cast<int>(rows)));
    const chart::CairoContext context(cairo_create(surface.get()));
    cairo_t* cairo = context.get();
    constexpr double ground[] = {0xE3 / 255.0, 0xE7 / 255.0, 0xEB / 255.0};
    cairo_set_source_rgb(cairo, ground[0], ground[1], ground[2]);
    cairo_paint(cairo);
    cairo_scale(cairo, columns / width, rows / height);
    for (std::size_t index = 0; index < tops.size(); ++index) {
        cairo_save(cairo);
        cairo_translate(cairo, 0, tops[index]);
        chart::paint(cairo, scene.pages[index]);
        cairo_restore(cairo);
    }
    SceneFile file;
    cairo_status_t status = cairo_status(cairo);
    if (status == CAIRO_STATUS_SUCCESS) {
        cairo_surface_flush(surface.get());
        status = cairo_surface_write_to_png_stream(surface.get(), append, &file.bytes);
    }
    if (status != CAIRO_STATUS_SUCCESS) {
        return {.fault =
                    std::string("the picture cannot be drawn: ") + cairo_status_to_string(status)};
    }
    // Behind the signature and the first chunk, which says the sides.
    constexpr std::size_t afterHeader = 8 + 25;
    file.bytes.insert(afterHeader, chunkOfResolution(resolution));
    return file;
}

}  // namespace platen
