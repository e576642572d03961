// The picture of a clip: tracks as rows, what lies on them as bars.
#include "clipPlot.h"

#include "canvas.h"
#include "numbers.h"

#include <kvAnimationBlock.h>
#include <kvAnimationClip.h>
#include <kvAnimationSequence2.h>
#include <kvAnimationTrack.h>

#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace kvanim {
namespace {

constexpr double kWidth = 1100.0, kLeft = 90.0, kRight = 30.0, kTop = 44.0, kBottom = 70.0;
constexpr double kRow = 22.0, kPlotWidth = kWidth - kLeft - kRight;
const Colour kBlock{0.40, 0.62, 0.82}, kSubclip{0.56, 0.76, 0.42}, kSequence{0.95, 0.56, 0.27};

struct Bar {
    float start;
    float end;
    std::string name;
    Colour colour;
    bool active;
};

struct Row {
    int number;
    bool active;
    std::vector<Bar> bars;
};

std::vector<Row> rowsOf(const kvAnimationClip& clip) {
    std::vector<Row> rows;
    for (const kvAnimationTrack* track : clip.getTracks()) {
        Row row{track->getNumber(), track->getActive(), {}};
        for (const kvAnimationBlock* b : track->getBlocks())
            row.bars.push_back(
                {b->getStartFrame(), b->getEndFrame(), b->getBlockName(), kBlock, b->getActive()});
        for (kvAnimationClip* c : track->getClips())
            row.bars.push_back(
                {c->getStartFrame(), c->getEndFrame(), c->getName(), kSubclip, c->getActive()});
        for (const kvAnimationSequence2* s : track->getSequences())
            row.bars.push_back({s->getStartFrame(), s->getEndFrame(), s->getSequence(), kSequence,
                                s->getActive()});
        rows.push_back(std::move(row));
    }
    return rows;
}

struct Span {
    double first = 0.0;
    double last = 1.0;

    double x(double frame) const { return kLeft + (frame - first) / (last - first) * kPlotWidth; }
};

Span spanOf(const std::vector<Row>& rows) {
    double low = HUGE_VAL, high = -HUGE_VAL;
    for (const Row& row : rows) {
        for (const Bar& bar : row.bars) {
            if (!(bar.start <= bar.end) || !std::isfinite(bar.start) || !std::isfinite(bar.end))
                continue;
            low = (std::min)(low, static_cast<double>(bar.start));
            high = (std::max)(high, static_cast<double>(bar.end));
        }
    }
    if (low > high) return {};
    const double margin = high > low ? 0.03 * (high - low) : 1.0;
    return {low - margin, high + margin};
}

void drawFrames(cairo_t* cairo, const Span& span, double bottom) {
    const double step = roundStep(span.last - span.first, 14);
    cairo_set_line_width(cairo, 1.0);
    const double first = std::ceil(span.first / step);
    for (int i = 0; i < 100 && (first + i) * step <= span.last; ++i) {
        const double frame = (first + i) * step;
        setColour(cairo, {0.9, 0.9, 0.9});
        drawLine(cairo, span.x(frame), kTop, span.x(frame), bottom);
        setColour(cairo, {0.3, 0.3, 0.3});
        drawText(cairo, span.x(frame), bottom + 16.0, brief(frame), Align::Centre);
    }
    drawText(cairo, kLeft + kPlotWidth / 2.0, bottom + 34.0, "frame", Align::Centre);
}

void drawBar(cairo_t* cairo, const Bar& bar, const Span& span, double top) {
    if (!(bar.start <= bar.end)) return; // covers nothing
    const double left = span.x(static_cast<double>(bar.start));
    const double width = (std::max)(span.x(static_cast<double>(bar.end)) - left, 1.5);
    cairo_rectangle(cairo, left, top + 3.0, width, kRow - 6.0);
    setColour(cairo, bar.colour, bar.active ? 0.85 : 0.3);
    cairo_fill_preserve(cairo);
    setColour(cairo, {0.3, 0.3, 0.3});
    cairo_set_line_width(cairo, 0.8);
    cairo_save(cairo);
    cairo_stroke_preserve(cairo);
    cairo_clip(cairo); // the name ends where the bar ends
    setColour(cairo, {0.1, 0.1, 0.1});
    drawText(cairo, left + 4.0, top + kRow - 7.0, bar.name, Align::Left);
    cairo_restore(cairo);
    cairo_new_path(cairo);
}

void drawLegend(cairo_t* cairo, double y) {
    double x = kLeft;
    const auto entry = [&](const Colour& colour, const char* name) {
        setColour(cairo, colour, 0.85);
        cairo_rectangle(cairo, x, y - 9.0, 16.0, 10.0);
        cairo_fill(cairo);
        setColour(cairo, {0.15, 0.15, 0.15});
        drawText(cairo, x + 22.0, y, name, Align::Left);
        x += 110.0;
    };
    entry(kBlock, "block");
    entry(kSubclip, "sub-clip");
    entry(kSequence, "sequence");
}

} // namespace

void plotClip(const std::string& file, const kvAnimationClip& clip) {
    const std::vector<Row> rows = rowsOf(clip);
    const Span span = spanOf(rows);
    const double bottom =
        kTop + kRow * static_cast<double>((std::max)(rows.size(), std::size_t{1}));
    drawPicture(file, kWidth, bottom + kBottom, [&](cairo_t* cairo) {
        cairo_select_font_face(cairo, "sans-serif", CAIRO_FONT_SLANT_NORMAL,
                               CAIRO_FONT_WEIGHT_NORMAL);
        cairo_set_font_size(cairo, 14.0);
        setColour(cairo, {0.1, 0.1, 0.1});
        drawText(cairo, kWidth / 2.0, 22.0, clip.getName(), Align::Centre);
        cairo_set_font_size(cairo, 11.0);
        drawFrames(cairo, span, bottom);
        double top = kTop;
        for (const Row& row : rows) {
            setColour(cairo, {0.15, 0.15, 0.15});
            drawText(cairo, kLeft - 10.0, top + kRow - 7.0,
                     "track " + std::to_string(row.number) + (row.active ? "" : " (off)"),
                     Align::Right);
            setColour(cairo, {0.8, 0.8, 0.8});
            cairo_set_line_width(cairo, 0.6);
            drawLine(cairo, kLeft, top + kRow, kLeft + kPlotWidth, top + kRow);
            for (const Bar& bar : row.bars)
                drawBar(cairo, bar, span, top);
            top += kRow;
        }
        setColour(cairo, {0.3, 0.3, 0.3});
        cairo_set_line_width(cairo, 1.0);
        cairo_rectangle(cairo, kLeft, kTop, kPlotWidth, bottom - kTop);
        cairo_stroke(cairo);
        drawLegend(cairo, bottom + kBottom - 14.0);
    });
}

} // namespace kvanim
