#include "core/SavingMessages.h"
#include "panels/HistorySlice.h"
#include "printing/PageDrawing.h"
#include "printing/QtPrintPanels.h"
#include "support/Desk.h"
#include "support/PdfText.h"
#include "support/Reports.h"
#include "toolkit/WindowSize.h"

#include <QDialog>
#include <QEvent>
#include <QFile>
#include <QGraphicsView>
#include <QPageRanges>
#include <QPrintPreviewWidget>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace tensio;

namespace {

// The preview of a session of 70 measurements, once a command has opened it.
struct Preview : Desk {
    explicit Preview(bool isSimulated = false)
    {
        port->isSimulator = isSimulated;
        connect();
        finish();
        hasPrinter = true;
        saving.answer = "/folder/file";
        for (auto const& measurement : finishedMeasurements(70))
            manager.measurementList.add(measurement);
    }

    QWidget& dialog() const { return find<PrintPreview>(window); }
    QAbstractButton& button(char const* name) const { return find(dialog(), name); }
    // The preview paints when its events are due.
    std::string position() const
    {
        QCoreApplication::processEvents();
        return textOf(dialog(), "positionLabel");
    }
    bool showsMessage(char const* text) const
    {
        auto const& message = find<QLabel>(dialog(), "messageLabel");
        return message.isVisible() && message.text() == text;
    }
};

} // namespace

TEST(PrintPreview, ShowsTheChosenReportPageByPage)
{
    Preview preview;
    preview.command("一覧を印刷").trigger();
    EXPECT_EQ(preview.position(), "1 / 2 ページ");
    EXPECT_FALSE(preview.button("selectedButton").isEnabled()) << "nothing is selected";
    auto const& dialog = preview.dialog();
    EXPECT_EQ(dialog.size().boundedTo(availableSize(dialog)), dialog.size());
    EXPECT_EQ(dialog.size().expandedTo(dialog.minimumSizeHint()), dialog.size()) << "uncut";
    for (auto const& [button, position] :
        {std::pair {"nextButton", "2 / 2 ページ"}, {"gridButton", "2 / 8 ページ"},
            {"previousButton", "1 / 8 ページ"}, {"listButton", "1 / 2 ページ"}}) {
        preview.button(button).click();
        EXPECT_EQ(preview.position(), position);
    }
    EXPECT_EQ(preview.button("nextButton").accessibleName(), "次のページ");
    auto const zoomAfter = [&](char const* button) {
        preview.button(button).click();
        return find<QLabel>(dialog, "zoomLabel").text().chopped(1).toInt();
    };
    auto const page = zoomAfter("fitPageButton");
    auto const width = zoomAfter("fitWidthButton");
    EXPECT_LT(page, width);
    EXPECT_LT(width, zoomAfter("zoomInButton"));
    EXPECT_EQ(zoomAfter("zoomOutButton"), width);
    preview.button("closeButton").click();
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    preview.manager.measurementList.measurements()[3]->isCounted.setValue(true);
    preview.command("選択した測定を印刷").trigger();
    EXPECT_EQ(preview.position(), "1 / 1 ページ");
    auto& pages = find<QGraphicsView>(preview.dialog());
    auto const pictureOfOne = pages.grab().toImage();
    preview.manager.measurementList.measurements()[4]->isCounted.setValue(true);
    preview.button("selectedButton").click();
    EXPECT_NE(pages.grab().toImage(), pictureOfOne);
}

TEST(PrintPreview, SavesAndPrintsTheChosenPagesOfWhatItShows)
{
    QTemporaryDir folder;
    auto const file = folder.filePath("printed.pdf");
    Preview preview;
    preview.changePrinter = [&](QPrinter& printer) {
        EXPECT_EQ(printer.docName(), "舌圧測定結果");
        printer.setOutputFileName(file);
        printer.setPageRanges(QPageRanges::fromString("8"));
    };
    preview.command("一覧を印刷").trigger();
    preview.button("gridButton").click();
    preview.button("savePdfButton").click();
    EXPECT_NE(pdfText(preview.saving.written).find("計測回数： 70回目"), std::string::npos);
    preview.button("printButton").click();
    QFile printed(file);
    ASSERT_TRUE(printed.open(QIODevice::ReadOnly));
    auto const text = pdfText(printed.readAll().toStdString());
    EXPECT_NE(text.find("計測回数： 70回目"), std::string::npos) << text;
    EXPECT_EQ(text.find("計測回数： 63回目"), std::string::npos) << "page 7: " << text;
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(preview.window.findChild<QDialog*>(), nullptr) << "the report is dropped";
}

TEST(PrintPreview, OffersNoChoiceBesideAReportOfItsOwn)
{
    Preview preview(true);
    preview.changePrinter = [&](QPrinter& printer) {
        EXPECT_EQ(printer.docName(), reportTitle(true));
        printer.setPageSize(QPageSize(QPageSize::A7));
    };
    Q_EMIT find<HistorySlice>(preview.window).willPrintCurve();
    EXPECT_EQ(preview.position(), "1 / 1 ページ");
    EXPECT_EQ(preview.dialog().windowTitle(), "印刷プレビュー — 波形");
    EXPECT_FALSE(preview.button("listButton").isVisible());
    EXPECT_TRUE(preview.showsMessage(simulatedMessage));
    preview.button("printButton").click();
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
    auto const& messages = preview.alerts.messages;
    preview.command("一覧を印刷").trigger();
    preview.hasPrinter = false;
    preview.button("printButton").click();
    EXPECT_NE(messages.at(0).find("プリンターがありません"), std::string::npos);
    preview.hasPrinter = true;
    preview.changePrinter = [](QPrinter& printer) {
        printer.setPageSize(QPageSize(QPageSize::A7));
        printer.setPageRanges(QPageRanges::fromString("2"));
    };
    preview.button("printButton").click();
    EXPECT_EQ(messages.size(), 2U);
    preview.command("一覧をPDF").trigger();
    EXPECT_EQ(messages.size(), 3U) << "for PDF files, too";
    EXPECT_EQ(messages.back(), paperTooSmallMessage);
    preview.position();
    EXPECT_TRUE(preview.showsMessage(paperTooSmallMessage));
    EXPECT_FALSE(find<QPrintPreviewWidget>(preview.dialog()).isVisible()) << "of another paper";
    EXPECT_FALSE(preview.button("printButton").isEnabled());
    EXPECT_FALSE(preview.button("savePdfButton").isEnabled());
    preview.changePrinter
        = [](QPrinter& printer) { printer.setPageSize(QPageSize(QPageSize::A4)); };
    preview.button("pageSetupButton").click();
    EXPECT_EQ(preview.position(), "1 / 2 ページ") << "not the page that was asked for";
    EXPECT_FALSE(find<QLabel>(preview.dialog(), "messageLabel").isVisible());
    preview.button("savePdfButton").click();
    EXPECT_FALSE(preview.saving.written.empty());
}
