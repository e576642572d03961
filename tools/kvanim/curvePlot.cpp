// The picture of curves, as a curve editor would show them.
#include "curvePlot.h"

#include "canvas.h"
#include "numbers.h"

#include <kvAnimationCurve.h>
#include <kvAnimationManager2.h>

#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace kvanim {
namespace {

constexpr double kWidth = 1100.0, kHeight = 620.0;
constexpr double kLeft = 80.0, kTop = 44.0, kBottom = 50.0, kRight = 230.0;
constexpr double kPlotWidth = kWidth - kLeft - kRight, kPlotHeight = kHeight - kTop - kBottom;
/// Keys closer than this many points on average are not marked one by one.
constexpr double kDensest = 5.0;

/// The window of frames and values that is shown, and where they are on the picture.
struct View {
    double firstFrame = HUGE_VAL, lastFrame = -HUGE_VAL;
    double lowest = HUGE_VAL, highest = -HUGE_VAL;

    double x(double frame) const {
        return kLeft + (frame - firstFrame) / (lastFrame - firstFrame) * kPlotWidth;
    }
    double y(double value) const {
        return kTop + (highest - value) / (highest - lowest) * kPlotHeight;
    }
    double frameAt(double px) const {
        return firstFrame + (px - kLeft) / kPlotWidth * (lastFrame - firstFrame);
    }

    void include(kvControlPoint::Point p) {
        if (!std::isfinite(p.x) || !std::isfinite(p.y)) return;
        firstFrame = (std::min)(firstFrame, p.x);
        lastFrame = (std::max)(lastFrame, p.x);
        lowest = (std::min)(lowest, p.y);
        highest = (std::max)(highest, p.y);
    }

    void pad() {
        if (firstFrame > lastFrame) *this = View{0.0, 1.0, 0.0, 1.0};
        const auto widen = [](double& low, double& high) {
            const double margin = high > low ? 0.04 * (high - low) : 1.0;
            low -= margin;
            high += margin;
        };
        widen(firstFrame, lastFrame);
        widen(lowest, highest);
    }
};

View viewOf(const std::vector<SelectedCurve>& curves) {
    View view;
    for (const SelectedCurve& one : curves) {
        for (const kvControlPoint& key : std::as_const(*one.curve).getCPs()) {
            view.include(key.getPoint());
            view.include(key.getInTangent());
            view.include(key.getOutTangent());
        }
    }
    view.pad();
    return view;
}

Colour colourOf(kvAnimationCurve& curve) {
    const osg::Vec3f c = curve.getColor();
    return {static_cast<double>(c[0]) / 255.0, static_cast<double>(c[1]) / 255.0,
            static_cast<double>(c[2]) / 255.0};
}

bool crowded(kvAnimationCurve& curve, const View& view) {
    const std::vector<kvControlPoint>& keys = std::as_const(curve).getCPs();
    if (keys.size() < 2) return false;
    const double width = view.x(keys.back().getPoint().x) - view.x(keys.front().getPoint().x);
    return !(width / static_cast<double>(keys.size()) >= kDensest);
}

void drawGrid(cairo_t* cairo, const View& view) {
    const double frameStep = roundStep(view.lastFrame - view.firstFrame, 12);
    const double valueStep = roundStep(view.highest - view.lowest, 10);
    cairo_set_line_width(cairo, 1.0);
    const auto each = [](double low, double high, double step, const auto& draw) {
        const double first = std::ceil(low / step);
        for (int i = 0; i < 100 && (first + i) * step <= high; ++i) {
            const double value = (first + i) * step;
            draw(std::fabs(value) < step * 1e-9 ? 0.0 : std::round(value * 1e9) / 1e9);
        }
    };
    each(view.firstFrame, view.lastFrame, frameStep, [&](double frame) {
        setColour(cairo, {0.9, 0.9, 0.9});
        drawLine(cairo, view.x(frame), kTop, view.x(frame), kTop + kPlotHeight);
        setColour(cairo, {0.3, 0.3, 0.3});
        drawText(cairo, view.x(frame), kTop + kPlotHeight + 16.0, shortest(frame), Align::Centre);
    });
    each(view.lowest, view.highest, valueStep, [&](double value) {
        setColour(cairo, value == 0.0 ? Colour{0.6, 0.6, 0.6} : Colour{0.9, 0.9, 0.9});
        drawLine(cairo, kLeft, view.y(value), kLeft + kPlotWidth, view.y(value));
        setColour(cairo, {0.3, 0.3, 0.3});
        drawText(cairo, kLeft - 6.0, view.y(value) + 4.0, shortest(value), Align::Right);
    });
    setColour(cairo, {0.3, 0.3, 0.3});
    cairo_rectangle(cairo, kLeft, kTop, kPlotWidth, kPlotHeight);
    cairo_stroke(cairo);
    drawText(cairo, kLeft + kPlotWidth / 2.0, kHeight - 12.0, "frame", Align::Centre);
    drawText(cairo, kLeft - 6.0, kTop - 10.0, "value", Align::Right);
}

/// Frames at which the curve is evaluated: every third of a point, and both sides of every key that
/// is drawn by itself, so that steps are upright.
std::vector<double> samplesOf(kvAnimationCurve& curve, const View& view) {
    std::vector<double> frames;
    const int count = static_cast<int>(kPlotWidth * 3.0);
    for (int i = 0; i <= count; ++i)
        frames.push_back(view.frameAt(kLeft + static_cast<double>(i) / 3.0));
    if (!crowded(curve, view)) {
        for (const kvControlPoint& key : std::as_const(curve).getCPs()) {
            const float frame = static_cast<float>(key.getPoint().x);
            frames.push_back(static_cast<double>(std::nextafter(frame, -HUGE_VALF)));
            frames.push_back(static_cast<double>(frame));
        }
    }
    std::sort(frames.begin(), frames.end());
    return frames;
}

void drawCurve(cairo_t* cairo, kvAnimationCurve& curve, const View& view) {
    cairo_set_line_width(cairo, 1.6);
    setColour(cairo, colourOf(curve));
    bool open = false;
    for (const double at : samplesOf(curve, view)) {
        const float frame = static_cast<float>(at);
        const float value = kvAnimationManager2::computeCurveValue(&curve, frame);
        if (value == -1.0e23F || !std::isfinite(value)) { // a gap stays a gap
            if (open) cairo_stroke(cairo);
            open = false;
            continue;
        }
        const double x = view.x(static_cast<double>(frame)), y = view.y(static_cast<double>(value));
        if (open)
            cairo_line_to(cairo, x, y);
        else
            cairo_move_to(cairo, x, y);
        open = true;
    }
    if (open) cairo_stroke(cairo);
}

void drawKeys(cairo_t* cairo, kvAnimationCurve& curve, const View& view) {
    if (crowded(curve, view)) return;
    const Colour colour = colourOf(curve);
    cairo_set_line_width(cairo, 0.8);
    for (const kvControlPoint& key : std::as_const(curve).getCPs()) {
        const kvControlPoint::Point p = key.getPoint();
        for (const kvControlPoint::Point h : {key.getInTangent(), key.getOutTangent()}) {
            if (h.x == p.x && h.y == p.y) continue;
            setColour(cairo, colour, 0.6);
            drawLine(cairo, view.x(p.x), view.y(p.y), view.x(h.x), view.y(h.y));
            cairo_arc(cairo, view.x(h.x), view.y(h.y), 2.2, 0.0, 6.283185307179586);
            cairo_fill(cairo);
        }
        setColour(cairo, {0.15, 0.15, 0.15});
        cairo_rectangle(cairo, view.x(p.x) - 2.5, view.y(p.y) - 2.5, 5.0, 5.0);
        cairo_fill(cairo);
    }
}

void drawLegend(cairo_t* cairo, const std::vector<SelectedCurve>& curves, const View& view) {
    constexpr double kLine = 18.0;
    const std::size_t most = static_cast<std::size_t>(kPlotHeight / kLine) - 1;
    const double left = kLeft + kPlotWidth + 14.0;
    double y = kTop + 10.0;
    bool anyCrowded = false;
    for (std::size_t i = 0; i < curves.size(); ++i, y += kLine) {
        anyCrowded = anyCrowded || crowded(*curves[i].curve, view);
        if (i >= most) continue;
        setColour(cairo, colourOf(*curves[i].curve));
        cairo_set_line_width(cairo, 3.0);
        drawLine(cairo, left, y - 4.0, left + 18.0, y - 4.0);
        setColour(cairo, {0.15, 0.15, 0.15});
        drawText(cairo, left + 24.0, y, curves[i].title(), Align::Left);
    }
    setColour(cairo, {0.4, 0.4, 0.4});
    if (curves.size() > most)
        drawText(cairo, left, kTop + 10.0 + static_cast<double>(most) * kLine,
                 "and " + std::to_string(curves.size() - most) + " more", Align::Left);
    if (anyCrowded) drawText(cairo, left, kHeight - 12.0, "keys too dense to mark", Align::Left);
}

} // namespace

void plotCurves(const std::string& file, const std::string& title,
                const std::vector<SelectedCurve>& curves) {
    const View view = viewOf(curves);
    drawPicture(file, kWidth, kHeight, [&](cairo_t* cairo) {
        cairo_select_font_face(cairo, "sans-serif", CAIRO_FONT_SLANT_NORMAL,
                               CAIRO_FONT_WEIGHT_NORMAL);
        cairo_set_font_size(cairo, 14.0);
        setColour(cairo, {0.1, 0.1, 0.1});
        drawText(cairo, kLeft + kPlotWidth / 2.0, 22.0, title, Align::Centre);
        cairo_set_font_size(cairo, 11.0);
        drawGrid(cairo, view);
        cairo_save(cairo);
        cairo_rectangle(cairo, kLeft, kTop, kPlotWidth, kPlotHeight);
        cairo_clip(cairo);
        for (const SelectedCurve& one : curves)
            drawCurve(cairo, *one.curve, view);
        for (const SelectedCurve& one : curves)
            drawKeys(cairo, *one.curve, view);
        cairo_restore(cairo);
        drawLegend(cairo, curves, view);
    });
}

} // namespace kvanim
