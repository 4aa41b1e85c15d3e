#pragma once

#include "core/NumberText.h"
#include "platform/PrintView.h"

#include <vector>

namespace tensio {

// What is drawn on a page, a line each: "x y width height size alignment text", "frame" after a
// rectangle, "line" after its points, "dot" after its centre and radius; ink as a number. A line of
// 8 points is 11.3 points high.
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
    void drawText(PrintRect rect, TextStyle style, std::string const& text) override
    {
        constexpr std::string_view alignments = "<|>";
        lines.push_back(numbers({rect.x, rect.y, rect.width, rect.height, style.fontSize})
            + alignments.at(static_cast<std::size_t>(style.alignment)) + " " + text);
    }
    void strokeRect(PrintRect rect) override
    {
        lines.push_back(numbers({rect.x, rect.y, rect.width, rect.height}) + "frame");
    }

    void strokeLine(std::vector<PrintPoint> const& points, Stroke stroke) override
    {
        std::string places;
        for (auto const& point : points)
            places += numbers({point.x, point.y});
        lines.push_back(places + "line " + std::to_string(static_cast<int>(stroke.ink)));
    }
    void fillCircle(PrintPoint centre, double radius, Ink ink) override
    {
        lines.push_back(
            numbers({centre.x, centre.y, radius}) + "dot " + std::to_string(static_cast<int>(ink)));
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
