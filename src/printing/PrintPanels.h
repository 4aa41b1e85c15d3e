#pragma once

#include "reactive/Interface.h"

#include <functional>

class QPrinter;
class QWidget;

namespace tensio {

// The system's own panels of printing. They open above the parent and return at once; `agreed` is
// called when, and only when, the user agrees.
class PrintPanels : public Interface {
public:
    virtual bool hasPrinters() const = 0;
    // Both change the printer's settings; it must outlive the panel.
    virtual void openPageSetup(QPrinter& printer, QWidget& parent, std::function<void()> agreed)
        = 0;
    // The user may choose among that many pages.
    virtual void openPrint(
        QPrinter& printer, int pageCount, QWidget& parent, std::function<void()> agreed)
        = 0;
};

} // namespace tensio
