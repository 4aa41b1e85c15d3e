#pragma once

#include "platform/PrintCanvas.h"

#include <string>
#include <vector>

namespace tensio {

// From 0 to the top, which is a multiple of the step.
struct Scale {
    double top = 0.0;
    double step = 0.0;
};

// Reaches the value in at most seven steps of 1, 2, 5, 10, 20 and so on. The value is finite.
Scale scaleUpTo(double value);

// The scale of these pressures, from 10 to 200 kPa, which is more than any tongue presses. Values
// that are not finite do not count.
Scale pressureScale(std::vector<float> const& pressures);

struct ChartPoint {
    // In units of the chart's range.
    double x = 0.0;
    // kPa. Beyond the scale it is drawn at its end.
    float pressure = 0.0f;
};

// A chart of pressures over time, with a line and a number for each step. What is drawn first lies
// below.
class Chart {
public:
    // The frame has room for the plot, from x = 0 to the range, and for all texts around it. The
    // range is above 0.
    Chart(PrintCanvas& canvas, PrintRect const& frame, Scale const& pressures, double range);

    // Above the plot, inside the frame; values stay below it.
    void drawLegend(double x, Ink ink, std::string const& text) const;
    // How many ticks with a text to the right a frame of that width has room for.
    static std::size_t mostTicks(double frameWidth);
    // With a text in its middle or, as a name of what follows, to its right.
    void drawTick(double x, TextAlignment alignment, std::string const& text) const;
    // Points without a number are passed over.
    void drawLine(std::vector<ChartPoint> const& points, Stroke stroke) const;
    // Named beside its end.
    void drawTarget(std::vector<ChartPoint> const& points) const;
    // Filled, or open.
    void drawDot(ChartPoint point, Ink ink, bool isOpen = false);
    // Above the point; left out where it would cover a dot or another value.
    void drawValue(ChartPoint point, Ink ink);

private:
    void drawGrid() const;
    PrintPoint place(ChartPoint point) const;
    void drawText(PrintRect rect, TextAlignment alignment, Ink ink, std::string const& text) const;

    PrintCanvas& m_canvas;
    PrintRect m_plot;
    Scale m_pressures;
    double m_range;
    // What values must not cover.
    std::vector<PrintRect> m_taken;
};

} // namespace tensio
