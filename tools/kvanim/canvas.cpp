// Pictures through cairo: the surface for either format, and the few shapes that plots are made of.
#include "canvas.h"

#include "errors.h"
#include "outputFile.h"

#include <cairo-svg.h>
#include <cairo.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <filesystem>
#include <memory>

namespace kvanim {
namespace {

std::string extensionOf(const std::string& file) {
    std::string extension = std::filesystem::path(file).extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return extension;
}

using Surface = std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)>;
using Context = std::unique_ptr<cairo_t, decltype(&cairo_destroy)>;

bool drawInto(const std::string& file, bool vector, double width, double height,
              const std::function<void(cairo_t*)>& draw) {
    const Surface surface(vector ? cairo_svg_surface_create(file.c_str(), width, height)
                                 : cairo_image_surface_create(CAIRO_FORMAT_RGB24,
                                                              static_cast<int>(std::ceil(width)),
                                                              static_cast<int>(std::ceil(height))),
                          &cairo_surface_destroy);
    const Context context(cairo_create(surface.get()), &cairo_destroy);
    cairo_set_source_rgb(context.get(), 1.0, 1.0, 1.0);
    cairo_paint(context.get());
    draw(context.get());
    if (cairo_status(context.get()) != CAIRO_STATUS_SUCCESS) return false;
    if (!vector)
        return cairo_surface_write_to_png(surface.get(), file.c_str()) == CAIRO_STATUS_SUCCESS;
    cairo_surface_finish(surface.get());
    return cairo_surface_status(surface.get()) == CAIRO_STATUS_SUCCESS;
}

} // namespace

void requirePicture(const std::string& file) {
    const std::string extension = extensionOf(file);
    if (extension != ".svg" && extension != ".png")
        throw InputError(file, "a picture is written as .svg or .png");
    requireWritable(file);
}

void drawPicture(const std::string& file, double width, double height,
                 const std::function<void(cairo_t*)>& draw) {
    requirePicture(file);
    const bool vector = extensionOf(file) == ".svg";
    replaceFile(file, [&](const std::string& temporary) {
        return drawInto(temporary, vector, width, height, draw);
    });
}

void setColour(cairo_t* cairo, const Colour& colour, double alpha) {
    cairo_set_source_rgba(cairo, colour.red, colour.green, colour.blue, alpha);
}

void drawLine(cairo_t* cairo, double x0, double y0, double x1, double y1) {
    cairo_move_to(cairo, x0, y0);
    cairo_line_to(cairo, x1, y1);
    cairo_stroke(cairo);
}

void drawText(cairo_t* cairo, double x, double y, const std::string& text, Align align) {
    cairo_text_extents_t extents;
    cairo_text_extents(cairo, text.c_str(), &extents);
    const double share = align == Align::Left ? 0.0 : (align == Align::Centre ? 0.5 : 1.0);
    cairo_move_to(cairo, x - share * extents.x_advance, y);
    cairo_show_text(cairo, text.c_str());
}

double roundStep(double span, int most) {
    if (!(span > 0.0) || !std::isfinite(span)) return 1.0;
    const double rough = span / static_cast<double>(most);
    const double power = std::pow(10.0, std::floor(std::log10(rough)));
    for (const double factor : {1.0, 2.0, 5.0})
        if (factor * power >= rough) return factor * power;
    return 10.0 * power;
}

} // namespace kvanim
