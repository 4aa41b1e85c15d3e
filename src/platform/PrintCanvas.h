#pragma once

#include "platform/PrintInfo.h"
#include "reactive/Interface.h"

#include <string>

namespace tensio {

enum class TextAlignment { Left, Centre, Right };

// Draws pages on paper, in a PDF file or on the screen. Black ink, one typeface.
class PrintCanvas : public Interface {
public:
    // Height of a capital letter at the font size.
    virtual double capHeight(double fontSize) const = 0;
    // One line, capitals in the middle of the rectangle's height; what is wider than it is
    // condensed.
    virtual void drawText(
        PrintRect rect, double fontSize, TextAlignment alignment, std::string const& text)
        = 0;
    // An outline 1 point wide.
    virtual void strokeRect(PrintRect rect) = 0;
};

} // namespace tensio
