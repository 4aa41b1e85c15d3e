#pragma once

#include <optional>
#include <string>

namespace tensio {

// Lengths of printing are points, 1/72 inch; y grows downwards from the top left of the paper.

struct PrintRect {
    double x = 0.0;
    double y = 0.0;
    double width = 0.0;
    double height = 0.0;

    bool operator==(PrintRect const&) const = default;
};

// The paper in force: A4 unless something else is chosen.
struct PrintInfo {
    double paperWidth = 595.0;
    double paperHeight = 842.0;
    double leftMargin = 72.0;
    double topMargin = 72.0;
    double rightMargin = 72.0;
    double bottomMargin = 72.0;
};

enum class TextAlignment { Left, Centre, Right };

// What pages are drawn on, be it paper, PDF or picture. Black ink, one typeface.
class PrintCanvas {
public:
    PrintCanvas() = default;
    PrintCanvas(PrintCanvas const&) = delete;
    PrintCanvas& operator=(PrintCanvas const&) = delete;
    virtual ~PrintCanvas() = default;

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

// Something that comes in pages.
class PrintView {
public:
    PrintView() = default;
    PrintView(PrintView const&) = delete;
    PrintView& operator=(PrintView const&) = delete;
    virtual ~PrintView() = default;

    // Lays itself out for the paper, measuring with the canvas, and returns the number of pages; 0
    // when the paper is too small to hold anything. Before all else.
    virtual int paginate(PrintInfo const& info, PrintCanvas const& canvas) = 0;
    // Makes the page, counted from 1, the one to draw, and returns its printable area.
    virtual PrintRect rectForPage(int page) = 0;
    virtual void draw(PrintCanvas& canvas) const = 0;
};

// Makes PDF files, on the paper in force.
class PdfRenderer {
public:
    PdfRenderer() = default;
    PdfRenderer(PdfRenderer const&) = delete;
    PdfRenderer& operator=(PdfRenderer const&) = delete;
    virtual ~PdfRenderer() = default;

    virtual bool hasRoomFor(PrintView& view) const = 0;
    // The bytes of the file; nothing when it could not be made.
    virtual std::optional<std::string> render(PrintView& view) const = 0;
};

} // namespace tensio
