#pragma once

#include "core/NumberText.h"
#include "platform/PrintView.h"

#include <vector>

namespace tensio {

// What is drawn on a page, a line each: "x y width height size alignment text", or "frame" after
// the rectangle. A line of 8 points is 11.3 points high.
class Page : public PrintCanvas {
public:
    Page() = default;
    // Pages count from 1.
    Page(PrintView& view, int page)
    {
        view.rectForPage(page);
        view.draw(*this);
    }

    using Lines = std::vector<std::string>;
    Lines lines;

    double capHeight(double fontSize) const override { return fontSize * 5.65 / 8.0; }
    void drawText(
        PrintRect rect, double fontSize, TextAlignment alignment, std::string const& text) override
    {
        constexpr std::string_view alignments = "<|>";
        lines.push_back(numbers({rect.x, rect.y, rect.width, rect.height, fontSize})
            + alignments.at(static_cast<std::size_t>(alignment)) + " " + text);
    }
    void strokeRect(PrintRect rect) override
    {
        lines.push_back(numbers({rect.x, rect.y, rect.width, rect.height}) + "frame");
    }

private:
    static std::string numbers(std::vector<double> const& values)
    {
        std::string text;
        for (auto const value : values)
            text += formatFixed(static_cast<float>(value), 1) + " ";
        return text;
    }
};

} // namespace tensio
