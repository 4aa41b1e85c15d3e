#include "printing/QtPrintPanels.h"

#include "toolkit/OpenDialog.h"

#include <QPageSetupDialog>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>

#include <utility>

using namespace Qt::StringLiterals;

namespace tensio {

namespace {

void open(QDialog* panel, QWidget& parent, std::function<void()> agreed)
{
    QObject::connect(panel, &QDialog::accepted, &parent, std::move(agreed));
    openDialog(panel);
}

// Where Qt draws the panel, it names these controls only by what they show.
void describeControls(QDialog& panel)
{
    for (auto const& [control, description] : {std::pair {"pageSizeCombo", u"用紙サイズ"_s},
             {"unitCombo", u"単位"_s}, {"pagesPerSheetCombo", u"シートごとのページ数"_s},
             {"pagesPerSheetLayoutCombo", u"ページの順序"_s}}) {
        if (auto* found = panel.findChild<QWidget*>(QString::fromLatin1(control)))
            found->setAccessibleDescription(description);
    }
}

} // namespace

bool QtPrintPanels::hasPrinters() const
{
    return !QPrinterInfo::availablePrinterNames().isEmpty();
}

void QtPrintPanels::openPageSetup(QPrinter& printer, QWidget& parent, std::function<void()> agreed)
{
    auto* panel = new QPageSetupDialog(&printer, &parent);
    describeControls(*panel);
    open(panel, parent, std::move(agreed));
}

void QtPrintPanels::openPrint(
    QPrinter& printer, int pageCount, QWidget& parent, std::function<void()> agreed)
{
    auto* panel = new QPrintDialog(&printer, &parent);
    panel->setMinMax(1, pageCount);
    open(panel, parent, std::move(agreed));
}

} // namespace tensio
