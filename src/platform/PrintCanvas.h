#pragma once

#include "platform/PrintInfo.h"
#include "reactive/Interface.h"

#include <string>
#include <vector>

namespace tensio {

enum class TextAlignment { Left, Centre, Right };

enum class Ink { Black, Text, Caption, Hairline, Pressure, Target, Best, Paper };

struct TextStyle {
    double fontSize = 0.0;
    TextAlignment alignment = TextAlignment::Left;
    Ink ink = Ink::Black;
    bool isBold = false;
};

struct Stroke {
    Ink ink = Ink::Black;
    double width = 1.0;
};

// Draws pages on paper, in a PDF file or on the screen. One typeface.
class PrintCanvas : public Interface {
public:
    // Height of a capital letter at the font size.
    virtual double capHeight(double fontSize) const = 0;
    // One line, capitals in the middle of the rectangle's height; what is wider than it is
    // condensed.
    virtual void drawText(PrintRect rect, TextStyle style, std::string const& text) = 0;
    // An outline 1 point wide.
    virtual void strokeRect(PrintRect rect) = 0;
    // Straight lines from point to point.
    virtual void strokeLine(std::vector<PrintPoint> const& points, Stroke stroke) = 0;
    virtual void fillCircle(PrintPoint centre, double radius, Ink ink) = 0;
};

} // namespace tensio
