#pragma once

#include "output/Reports.h"

#include <QObject>
#include <QPageLayout>

#include <memory>

class QDialog;
class QGraphicsView;
class QPrinter;
class QPrintPreviewWidget;

namespace Ui {
class PrintPreview;
}

namespace tensio {

class Alerts;
class PrintPanels;

// Previews the printed pages in a window modal to the main one, in which the user chooses a report,
// sets up the page, prints, or saves as PDF.
class PrintPreviewController : public QObject {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(PrintPreviewController)

public:
    // The page layout is the current paper; setting the page up here changes it. Nothing is owned;
    // all must outlive the controller.
    PrintPreviewController(TensioManager& tensioManager, PrintPanels& panels, Alerts& alerts,
        QPageLayout& pageLayout, QWidget& parent);
    ~PrintPreviewController() override;

    // Only where hasReport().
    void show(ReportKind kind);
    // Another report, alone: the user is offered no choice. At most once.
    void show(std::unique_ptr<PrintView> view, QString const& title);

Q_SIGNALS:
    void closed();

private:
    void viewDidLoad();
    void connectButtons();
    void addPages();
    void choose(ReportKind kind);
    void setView(std::unique_ptr<PrintView> view);
    void open();
    void refresh();
    void showPages(QPrinter& printer);
    void showPosition();
    void turnPage(int step);
    void setUpPage();
    void print();

    TensioManager& m_tensioManager;
    PrintPanels& m_panels;
    Alerts& m_alerts;
    QPageLayout& m_pageLayout;
    std::unique_ptr<QPrinter> m_printer;
    std::unique_ptr<PrintView> m_view;
    std::unique_ptr<QDialog> m_window;
    std::unique_ptr<Ui::PrintPreview> m_ui;
    QPrintPreviewWidget* m_preview = nullptr;
    // The part of m_preview that takes the focus.
    QGraphicsView* m_pages = nullptr;
};

} // namespace tensio
