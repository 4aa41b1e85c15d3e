#include "printing/PrintPreview.h"

#include "core/SavingMessages.h"
#include "output/ListPrintView.h"
#include "printing/PageDrawing.h"
#include "printing/PrintPanels.h"
#include "printing/QtPrintPanels.h"
#include "support/PdfText.h"
#include "support/Reports.h"
#include "support/Session.h"
#include "support/Ui.h"
#include "toolkit/WindowSize.h"

#include <QCoreApplication>
#include <QDialog>
#include <QEvent>
#include <QFile>
#include <QGraphicsView>
#include <QPageRanges>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace tensio;

namespace {

// The user agrees at once, after doing this to the printer.
class AgreeingPanels : public PrintPanels {
public:
    bool printers = true;
    std::function<void(QPrinter&)> change;

    bool hasPrinters() const override { return printers; }
    void openPageSetup(QPrinter& printer, QWidget&, std::function<void()> agreed) override
    {
        change(printer);
        agreed();
    }
    void openPrint(QPrinter& printer, int, QWidget& parent, std::function<void()> agreed) override
    {
        openPageSetup(printer, parent, std::move(agreed));
    }
};

struct Preview {
    Session session;
    AgreeingPanels panels;
    QPageLayout pageLayout {defaultPageLayout()};
    QWidget parent;
    PrintPreview& window {
        *new PrintPreview({session.manager, panels, session.alerts, pageLayout}, parent)};

    Preview()
    {
        for (auto const& measurement : finishedMeasurements(70))
            session.manager.measurementList.add(measurement);
    }

    QAbstractButton& button(char const* name) const { return find(parent, name); }
    void click(char const* name) const { tensio::click(parent, name); }
    // The preview paints when its events are due.
    std::string position() const
    {
        QCoreApplication::processEvents();
        return textOf(parent, "positionLabel");
    }
};

} // namespace

TEST(PrintPreview, ShowsTheChosenReportPageByPage)
{
    Preview preview;
    preview.window.showReport(ReportKind::List);
    EXPECT_EQ(preview.position(), "1 / 2 ページ");
    EXPECT_FALSE(preview.button("selectedButton").isEnabled()) << "nothing is selected";
    auto const& window = preview.window;
    EXPECT_EQ(window.size().boundedTo(availableSize(window)), window.size());
    EXPECT_EQ(window.size().expandedTo(window.minimumSizeHint()), window.size()) << "uncut";
    for (auto const& [button, position] :
        {std::pair {"nextButton", "2 / 2 ページ"}, {"gridButton", "2 / 8 ページ"},
            {"previousButton", "1 / 8 ページ"}, {"listButton", "1 / 2 ページ"}}) {
        preview.click(button);
        EXPECT_EQ(preview.position(), position);
    }
    EXPECT_EQ(preview.button("nextButton").accessibleName(), "次のページ");
    auto const zoomAfter = [&](char const* button) {
        preview.click(button);
        return find<QLabel>(preview.parent, "zoomLabel").text().chopped(1).toInt();
    };
    auto const page = zoomAfter("fitPageButton");
    auto const width = zoomAfter("fitWidthButton");
    EXPECT_LT(page, width);
    EXPECT_LT(width, zoomAfter("zoomInButton"));
    EXPECT_EQ(zoomAfter("zoomOutButton"), width);
    preview.session.manager.measurementList.measurements()[3]->isCounted.setValue(true);
    preview.window.showReport(ReportKind::Selected);
    EXPECT_EQ(preview.position(), "1 / 1 ページ");
    EXPECT_TRUE(preview.button("selectedButton").isChecked());
    auto& pages = find<QGraphicsView>(preview.parent);
    auto const pictureOfOne = pages.grab().toImage();
    preview.session.manager.measurementList.measurements()[4]->isCounted.setValue(true);
    preview.click("selectedButton");
    EXPECT_NE(pages.grab().toImage(), pictureOfOne);
    preview.click("closeButton");
    EXPECT_FALSE(window.isVisible());
}

TEST(PrintPreview, SavesAndPrintsTheChosenPagesOfWhatItShows)
{
    QTemporaryDir folder;
    auto const file = folder.filePath("printed.pdf");
    Preview preview;
    preview.panels.change = [&](QPrinter& printer) {
        EXPECT_EQ(printer.docName(), "舌圧測定結果");
        printer.setOutputFileName(file);
        printer.setPageRanges(QPageRanges::fromString("8"));
    };
    preview.session.saving.answer = "/folder/file";
    preview.window.showReport(ReportKind::List);
    preview.click("gridButton");
    preview.click("savePdfButton");
    EXPECT_NE(preview.session.saving.written.find("GridPrintView"), std::string::npos);
    preview.click("printButton");
    QFile printed(file);
    ASSERT_TRUE(printed.open(QIODevice::ReadOnly));
    auto const text = pdfText(printed.readAll().toStdString());
    EXPECT_NE(text.find("計測回数： 70回目"), std::string::npos) << text;
    EXPECT_EQ(text.find("計測回数： 63回目"), std::string::npos) << "page 7: " << text;
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(preview.parent.findChild<QDialog*>(), nullptr) << "the report is dropped";
}

TEST(PrintPreview, OffersNoChoiceBesideAReportOfItsOwn)
{
    Preview preview;
    preview.panels.change = [&](QPrinter& printer) {
        EXPECT_EQ(printer.docName(), reportTitle(true));
        printer.setPageSize(QPageSize(QPageSize::A7));
    };
    auto report = std::make_unique<ListPrintView>("", finishedMeasurements(1));
    report->setSimulated(true);
    preview.window.showReport(std::move(report), "経過");
    EXPECT_EQ(preview.position(), "1 / 1 ページ");
    EXPECT_FALSE(preview.button("listButton").isVisible());
    auto const& message = find<QLabel>(preview.parent, "messageLabel");
    EXPECT_TRUE(message.isVisible() && message.text() == simulatedMessage);
    preview.click("printButton");
}

TEST(QtPrintPanels, TellOfAgreementAlone)
{
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

TEST(PrintPreview, SaysSoWhenThereIsNoPrinterOrNoRoomOnThePaper)
{
    Preview preview;
    auto const& messages = preview.session.alerts.messages;
    preview.window.showReport(ReportKind::List);
    preview.panels.printers = false;
    preview.click("printButton");
    EXPECT_NE(messages.at(0).find("プリンターがありません"), std::string::npos);
    preview.panels.printers = true;
    preview.panels.change = [](QPrinter& printer) {
        printer.setPageSize(QPageSize(QPageSize::A7));
        printer.setPageRanges(QPageRanges::fromString("2"));
    };
    preview.click("printButton");
    EXPECT_EQ(preview.pageLayout.pageSize().id(), QPageSize::A7) << "for PDF files, too";
    EXPECT_EQ(messages.back(), paperTooSmallMessage);
    preview.position();
    auto const& message = find<QLabel>(preview.parent, "messageLabel");
    EXPECT_TRUE(message.isVisible() && message.text() == paperTooSmallMessage);
    EXPECT_FALSE(find<QPrintPreviewWidget>(preview.parent).isVisible()) << "pages of another paper";
    EXPECT_FALSE(preview.button("printButton").isEnabled());
    EXPECT_FALSE(preview.button("savePdfButton").isEnabled());
    preview.panels.change
        = [](QPrinter& printer) { printer.setPageSize(QPageSize(QPageSize::A4)); };
    preview.click("pageSetupButton");
    EXPECT_EQ(preview.pageLayout.pageSize().id(), QPageSize::A4);
    EXPECT_EQ(preview.position(), "1 / 2 ページ") << "not the page that was asked for";
    EXPECT_FALSE(message.isVisible());
}
