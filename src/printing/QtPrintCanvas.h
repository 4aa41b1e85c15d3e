#pragma once

#include "platform/PrintCanvas.h"

class QPainter;

namespace tensio {

// Draws pages with a painter. The typeface is not the window's: of that one, Qt's PDF files name
// many characters by their look-alikes among the radicals, and neither search nor copy finds them.
class QtPrintCanvas : public PrintCanvas {
public:
    // Without a painter it only measures. One unit of the painter is a point, its origin the corner
    // of the paper; it must outlive the canvas.
    explicit QtPrintCanvas(QPainter* painter = nullptr)
        : m_painter(painter)
    {
    }

    double capHeight(double fontSize) const override;
    void drawText(PrintRect rect, TextStyle style, std::string const& text) override;
    void strokeRect(PrintRect rect) override;
    void strokeLine(std::vector<PrintPoint> const& points, Stroke stroke) override;
    void fillCircle(PrintPoint centre, double radius, Ink ink) override;

private:
    QPainter* m_painter;
};

} // namespace tensio
