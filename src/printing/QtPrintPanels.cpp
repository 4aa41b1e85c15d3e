#include "printing/QtPrintPanels.h"

#include <QPageSetupDialog>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>

#include <utility>

namespace tensio {

namespace {

// Without an event loop of its own, so that nothing else waits.
template<typename Panel>
void open(QPrinter& printer, QWidget& parent, std::function<void()> agreed)
{
    auto* panel = new Panel(&printer, &parent);
    panel->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(
        panel, &QDialog::accepted, &parent, [agreed = std::move(agreed)] { agreed(); });
    panel->QDialog::open();
}

} // namespace

bool QtPrintPanels::hasPrinters() const
{
    return !QPrinterInfo::availablePrinterNames().isEmpty();
}

void QtPrintPanels::openPageSetup(QPrinter& printer, QWidget& parent, std::function<void()> agreed)
{
    open<QPageSetupDialog>(printer, parent, std::move(agreed));
}

void QtPrintPanels::openPrint(QPrinter& printer, QWidget& parent, std::function<void()> agreed)
{
    open<QPrintDialog>(printer, parent, std::move(agreed));
}

} // namespace tensio
