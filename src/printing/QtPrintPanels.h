#pragma once

#include "printing/PrintPanels.h"

namespace tensio {

// The panels of Qt, which are the system's own where it has some.
class QtPrintPanels : public PrintPanels {
public:
    bool hasPrinters() const override;
    void openPageSetup(QPrinter& printer, QWidget& parent, std::function<void()> agreed) override;
    void openPrint(
        QPrinter& printer, int pageCount, QWidget& parent, std::function<void()> agreed) override;
};

} // namespace tensio
