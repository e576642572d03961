#pragma once

#include <cairo.h>

#include <functional>
#include <string>

namespace kvanim {

/// A colour with components from 0 to 1.
struct Colour {
    double red = 0.0;
    double green = 0.0;
    double blue = 0.0;
};

/// Draws a picture into an SVG or PNG file (by the extension, in any letter case) of the given size
/// in points; the file is complete or not there. Throws InputError for another extension or when it
/// cannot be written.
void drawPicture(const std::string& file, double width, double height,
                 const std::function<void(cairo_t*)>& draw);

/// Throws InputError unless the file has a picture's extension and a folder to stand in.
void requirePicture(const std::string& file);

void setColour(cairo_t* cairo, const Colour& colour, double alpha = 1.0);
void drawLine(cairo_t* cairo, double x0, double y0, double x1, double y1);

enum class Align { Left, Centre, Right };
void drawText(cairo_t* cairo, double x, double y, const std::string& text, Align align);

/// A round step (1, 2 or 5 times a power of ten) that divides `span` into at most `most` parts.
double roundStep(double span, int most);

} // namespace kvanim
