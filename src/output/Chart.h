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
    // kPa. Beyond the scale it is drawn at its end; NaN is not drawn.
    float pressure = 0.0f;
};

// A chart of pressures over time. What is drawn first lies below.
class Chart {
public:
    // The frame has room for the plot, from x = 0 to the range, and for all texts beside it.
    Chart(PrintCanvas& canvas, PrintRect const& frame, Scale const& pressures, double range);

    // The frame's height beyond that of the plot.
    static constexpr double margins = 36.0;

    // Lines and numbers, and the line of x.
    void drawGrid() const;
    void drawTick(double x) const;
    // Below a tick: in its middle or, with that width in points, to its right.
    void drawTickText(double x, std::string const& text) const;
    void drawTextAfterTick(double x, double width, std::string const& text) const;
    void drawLine(std::vector<ChartPoint> const& points, Stroke stroke) const;
    // Beside the right end.
    void drawTargetText(float pressure) const;
    // Filled, or open.
    void drawDot(ChartPoint point, Ink ink, bool isOpen = false);
    // Above the point; left out where it would cover a dot or another value.
    void drawValue(ChartPoint point, Ink ink);

    PrintRect const& plot() const { return m_plot; }

private:
    double positionOf(double x) const { return m_plot.x + x / m_range * m_plot.width; }
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
