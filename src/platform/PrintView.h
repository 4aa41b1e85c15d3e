#pragma once

#include "platform/PrintCanvas.h"

namespace tensio {

// A report in pages.
class PrintView : public Interface {
public:
    // Must be called first. Lays the view out for the paper, measuring with the canvas, and returns
    // the number of pages; 0 when the paper is too small for anything.
    virtual int paginate(PrintInfo const& info, PrintCanvas const& canvas) = 0;
    // Selects the page, from 1 to the number of pages, that draw() draws, and returns its printable
    // area.
    virtual PrintRect rectForPage(int page) = 0;
    // It shows readings of a simulated device; what draws the page says so in its margin.
    virtual bool isSimulated() const = 0;
    // Draws the selected page.
    virtual void draw(PrintCanvas& canvas) const = 0;
};

} // namespace tensio
