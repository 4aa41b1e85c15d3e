#pragma once

namespace tensio {

// Lengths of printing are points, 1/72 inch; y grows downwards from the top left of the paper.

struct PrintPoint {
    double x = 0.0;
    double y = 0.0;
};

struct PrintRect {
    double x = 0.0;
    double y = 0.0;
    double width = 0.0;
    double height = 0.0;

    bool operator==(PrintRect const&) const = default;
};

// The current paper: A4 unless something else is chosen.
struct PrintInfo {
    double paperWidth = 595.0;
    double paperHeight = 842.0;
    double leftMargin = 72.0;
    double topMargin = 72.0;
    double rightMargin = 72.0;
    double bottomMargin = 72.0;
};

} // namespace tensio
