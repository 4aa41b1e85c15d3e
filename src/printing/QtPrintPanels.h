#pragma once

#include "printing/PrintPanels.h"

namespace tensio {

// Qt's panels, which are the system's own where the system has them.
class QtPrintPanels : public PrintPanels {
public:
    bool hasPrinters() const override;
    void openPageSetup(QPrinter& printer, QWidget& parent, std::function<void()> agreed) override;
    void openPrint(
        QPrinter& printer, int pageCount, QWidget& parent, std::function<void()> agreed) override;
};

} // namespace tensio
