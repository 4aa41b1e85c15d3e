#pragma once

#include "output/Reports.h"

#include <QDialog>
#include <QPageLayout>

#include <memory>

class QGraphicsView;
class QPrinter;
class QPrintPreviewWidget;

namespace Ui {
class PrintPreview;
}

namespace tensio {

class Alerts;
class PrintPanels;

// What printing uses of the program.
struct PrintingServices {
    TensioManager& tensioManager;
    PrintPanels& panels;
    Alerts& alerts;
    // The current paper; setting the page up in the preview changes it.
    QPageLayout& pageLayout;
};

// Previews the printed pages in a window modal to its parent, in which the user chooses a report,
// sets up the page, prints, or saves as PDF. Deletes itself, with the report and its measurements,
// when it closes.
class PrintPreview : public QDialog {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(PrintPreview)

public:
    // Knows the printers that there are at this moment.
    PrintPreview(PrintingServices const& services, QWidget& parent);
    ~PrintPreview() override;

    // Only where hasReport().
    void showReport(ReportKind kind);
    // Another report, alone: the user is offered no choice. At most once.
    void showReport(std::unique_ptr<PrintView> view, QString const& title);

private:
    void connectButtons();
    void addPages();
    void choose(ReportKind kind);
    void setView(std::unique_ptr<PrintView> view);
    void appear();
    // To print, or where nothing can be printed, to choose other paper.
    void focusNextStep();
    void refresh();
    void showPages(QPrinter& printer);
    void showPosition();
    void turnPage(int step);
    void setUpPage();
    void print();

    PrintingServices m_services;
    std::unique_ptr<QPrinter> m_printer;
    std::unique_ptr<PrintView> m_view;
    std::unique_ptr<Ui::PrintPreview> m_ui;
    QPrintPreviewWidget* m_preview = nullptr;
    // The part of m_preview that takes the focus.
    QGraphicsView* m_pages = nullptr;
};

} // namespace tensio
