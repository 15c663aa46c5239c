#include <string>

#include <platen/chart_files.h>
#include "chart/files/cairo_handles.h"
#include "chart/files/painter.h"

namespace platen {
namespace {

cairo_status_t append(void* bytes, const unsigned char* data, unsigned int length) {
    static_cast<std::string*>(bytes)->append(reinterpret_cast<const char*>(data), length);
    return CAIRO_STATUS_SUCCESS;
}

}  // namespace

SceneFile scenePdf(const Scene& scene) {
    constexpr double pointsPerMillimetre = 72 / 25.4;
    SceneFile file;
    const chart::CairoSurface surface(
        cairo_pdf_surface_create_for_stream(append, &file.bytes, 1, 1));
    cairo_pdf_surface_set_metadata(surface.get(), CAIRO_PDF_METADATA_TITLE, scene.title.c_str());
    cairo_pdf_surface_set_metadata(surface.get(), CAIRO_PDF_METADATA_SUBJECT,
                                   scene.description.c_str());
    cairo_pdf_surface_set_metadata(surface.get(), CAIRO_PDF_METADATA_CREATOR, "Platen");
    // Without one the file would have the time of now.
    cairo_pdf_surface_set_metadata(surface.get(), CAIRO_PDF_METADATA_CREATE_DATE, nullptr);
    cairo_status_t status = CAIRO_STATUS_SUCCESS;
    for (const ScenePage& page : scene.pages) {
        cairo_pdf_surface_set_size(surface.get(), page.width * pointsPerMillimetre,
                                   page.height * pointsPerMillimetre);
        const chart::CairoContext context(cairo_create(surface.get()));
        cairo_scale(context.get(), pointsPerMillimetre, pointsPerMillimetre);
        chart::paint(context.get(), page);
        cairo_show_page(context.get());
        status = status == CAIRO_STATUS_SUCCESS ? cairo_status(context.get()) : status;
    }
    cairo_surface_finish(surface.get());
    status = status == CAIRO_STATUS_SUCCESS ? cairo_surface_status(surface.get()) : status;
    if (status != CAIRO_STATUS_SUCCESS) {
        return {.fault =
                    std::string("the pages cannot be drawn: ") + cairo_status_to_string(status)};
    }
    return file;
}

}  // namespace platen
