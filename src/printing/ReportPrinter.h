#pragma once

#include "printing/PrintPreviewController.h"

namespace tensio {

// Opens the preview, from which the user prints. The report and its measurements are dropped when
// the preview closes.
class ReportPrinter {
public:
    // As for PrintPreviewController.
    ReportPrinter(TensioManager& tensioManager, PrintPanels& panels, Alerts& alerts,
        QPageLayout& pageLayout, QWidget& parent);

    // Both return at once. The first only where hasReport(), the second above that window.
    void print(ReportKind kind);
    void print(std::unique_ptr<PrintView> report, QString const& title, QWidget& window);

private:
    PrintPreviewController& preview(QWidget& window);

    TensioManager& m_tensioManager;
    PrintPanels& m_panels;
    Alerts& m_alerts;
    QPageLayout& m_pageLayout;
    QWidget& m_parent;
    // While the preview is open.
    std::unique_ptr<PrintPreviewController> m_preview;
};

} // namespace tensio
