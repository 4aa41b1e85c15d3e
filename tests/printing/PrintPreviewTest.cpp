#include "printing/PrintPreview.h"

#include "printing/QtPrintPanels.h"
#include "support/Desk.h"
#include "toolkit/WindowSize.h"

#include <QDialog>
#include <QEvent>
#include <QPrinterInfo>

#include <gtest/gtest.h>

using namespace tensio;

TEST(PrintPreview, ShowsAllOfItselfOnEveryScreenAndLeavesNothingBehind)
{
    Desk desk;
    desk.connect();
    desk.press({20.0});
    desk.finish();
    desk.command("一覧を印刷").trigger();
    auto& dialog = find<PrintPreview>(desk.window);
    EXPECT_EQ(dialog.size().boundedTo(availableSize(dialog)), dialog.size());
    EXPECT_EQ(dialog.size().expandedTo(dialog.minimumSizeHint()), dialog.size()) << "uncut";
    dialog.close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(desk.window.findChild<QDialog*>(), nullptr);
}

TEST(QtPrintPanels, TellOfAgreementAlone)
{
    EXPECT_EQ(QtPrintPanels().hasPrinters(), !QPrinterInfo::availablePrinters().isEmpty());
    QPrinter printer;
    for (bool const agrees : {false, true}) {
        int agreements = 0;
        QWidget parent;
        QtPrintPanels().openPageSetup(printer, parent, [&] { ++agreements; });
        QtPrintPanels().openPrint(printer, 1, parent, [&] { ++agreements; });
        for (auto* panel : parent.findChildren<QDialog*>())
            panel->done(agrees ? QDialog::Accepted : QDialog::Rejected);
        EXPECT_EQ(agreements, agrees ? 2 : 0);
    }
}
