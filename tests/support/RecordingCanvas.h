#pragma once

#include "platform/PrintView.h"

#include <string>
#include <vector>

namespace tensio {

struct DrawnText {
    PrintRect rect;
    double fontSize;
    TextAlignment alignment;
    std::string text;

    bool operator==(DrawnText const&) const = default;
};

struct Drawing {
    std::vector<DrawnText> texts;
    std::vector<PrintRect> frames;

    std::vector<std::string> textsThatContain(std::string const& part) const
    {
        std::vector<std::string> found;
        for (auto const& text : texts) {
            if (text.text.find(part) != std::string::npos)
                found.push_back(text.text);
        }
        return found;
    }
};

// Notes what is drawn. Capitals are half of a line of 11.3 points at 8 points.
class RecordingCanvas : public PrintCanvas {
public:
    Drawing drawing;

    double capHeight(double fontSize) const override { return fontSize * 5.65 / 8.0; }
    void drawText(
        PrintRect rect, double fontSize, TextAlignment alignment, std::string const& text) override
    {
        drawing.texts.push_back({rect, fontSize, alignment, text});
    }
    void strokeRect(PrintRect rect) override { drawing.frames.push_back(rect); }
};

inline Drawing draw(PrintView& view, int page)
{
    RecordingCanvas canvas;
    view.rectForPage(page);
    view.draw(canvas);
    return canvas.drawing;
}

} // namespace tensio
