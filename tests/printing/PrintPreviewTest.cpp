#include "core/SavingMessages.h"
#include "printing/PageDrawing.h"
#include "printing/PrintPanels.h"
#include "printing/PrintPreviewController.h"
#include "support/PdfText.h"
#include "support/Session.h"
#include "support/Ui.h"
#include "toolkit/DesignFrame.h"
#include "toolkit/WindowSize.h"

#include <QDialog>
#include <QFile>
#include <QLabel>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QTemporaryDir>
#include <QTest>

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
    QWidget parent;
    AgreeingPanels panels;
    QPageLayout pageLayout {defaultPageLayout()};
    PrintPreviewController controller {session.manager, panels, session.alerts, pageLayout, parent};

    explicit Preview(int measurements = 70)
    {
        session.connect();
        for (int press = 0; press < measurements; ++press)
            session.press({20.0});
        session.manager.disconnectAction.apply(Nothing {});
    }

    QAbstractButton& button(char const* name) const { return find(parent, name); }
    void click(char const* name) const { tensio::click(parent, name); }
    // The preview paints when its events are due.
    std::string position()
    {
        QCoreApplication::processEvents();
        return find<QLabel>(parent, "positionLabel").text().toStdString();
    }
};

} // namespace

TEST(PrintPreview, ShowsTheChosenReportPageByPage)
{
    Preview preview;
    preview.controller.show(ReportKind::List);
    EXPECT_EQ(preview.position(), "1 / 2 ページ");
    EXPECT_FALSE(preview.button("selectedButton").isEnabled()) << "nothing is selected";
    auto const& window = find<QDialog>(preview.parent, "PrintPreview");
    EXPECT_EQ(window.size().boundedTo(availableSize(window)), window.size());
    EXPECT_EQ(window.size().expandedTo(window.minimumSizeHint()), window.size()) << "uncut";
    EXPECT_EQ(find(window, "gridButton").width(), qRound(116 * designScale(window)));
    preview.button("nextButton").setFocus();
    preview.click("nextButton");
    EXPECT_EQ(preview.position(), "2 / 2 ページ");
    EXPECT_TRUE(preview.button("previousButton").hasFocus()) << "not the zoom";
    preview.click("gridButton");
    EXPECT_EQ(preview.position(), "2 / 8 ページ");

    preview.session.manager.measurementList.measurements()[3]->isCounted.setValue(true);
    preview.controller.show(ReportKind::Selected);
    EXPECT_EQ(preview.position(), "1 / 1 ページ");
    EXPECT_TRUE(preview.button("selectedButton").isChecked());
    EXPECT_FALSE(preview.button("listButton").isChecked());
}

TEST(PrintPreview, SavesAndPrintsWhatItShows)
{
    QTemporaryDir folder;
    auto const file = folder.filePath(QStringLiteral("printed.pdf"));
    Preview preview;
    preview.panels.change = [&](QPrinter& printer) { printer.setOutputFileName(file); };
    preview.session.saving.answer = "/folder/file";
    bool isClosed = false;
    QObject::connect(
        &preview.controller, &PrintPreviewController::closed, [&] { isClosed = true; });
    preview.controller.show(ReportKind::Grid);
    preview.click("savePdfButton");
    EXPECT_EQ(preview.session.saving.log.back(), "write /folder/file");
    preview.click("printButton");
    QFile printed(file);
    ASSERT_TRUE(printed.open(QIODevice::ReadOnly));
    auto const text = pdfText(printed.readAll().toStdString());
    EXPECT_NE(text.find("計測回数： 70回目"), std::string::npos) << text;
    EXPECT_TRUE(isClosed) << "so that the report can be dropped";
}

TEST(PrintPreview, SaysSoWhenThereIsNoPrinterOrNoRoomOnThePaper)
{
    Preview preview;
    preview.controller.show(ReportKind::List);
    preview.panels.printers = false;
    preview.click("printButton");
    EXPECT_NE(
        preview.session.alerts.messages.at(0).find("プリンターがありません"), std::string::npos);
    preview.panels.printers = true;
    preview.panels.change
        = [](QPrinter& printer) { printer.setPageSize(QPageSize(QPageSize::A7)); };
    preview.click("printButton");
    EXPECT_EQ(preview.session.alerts.messages.back(), paperTooSmallMessage);
    preview.pageLayout = defaultPageLayout();
    preview.click("pageSetupButton");
    preview.position();
    EXPECT_EQ(preview.pageLayout.pageSize().id(), QPageSize::A7) << "for PDF files, too";
    EXPECT_TRUE(find<QLabel>(preview.parent, "messageLabel").isVisible());
    EXPECT_FALSE(find<QPrintPreviewWidget>(preview.parent).isVisible()) << "pages of another paper";
    EXPECT_FALSE(preview.button("printButton").isEnabled());
    EXPECT_FALSE(preview.button("savePdfButton").isEnabled());
}
