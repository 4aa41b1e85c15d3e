#include "printing/ReportPrinter.h"

#include <utility>

namespace tensio {

ReportPrinter::ReportPrinter(TensioManager& tensioManager, PrintPanels& panels, Alerts& alerts,
    QPageLayout& pageLayout, QWidget& parent)
    : m_tensioManager(tensioManager)
    , m_panels(panels)
    , m_alerts(alerts)
    , m_pageLayout(pageLayout)
    , m_parent(parent)
{
}

void ReportPrinter::print(ReportKind kind)
{
    preview(m_parent).show(kind);
}

void ReportPrinter::print(std::unique_ptr<PrintView> report, QString const& title, QWidget& window)
{
    preview(window).show(std::move(report), title);
}

PrintPreviewController& ReportPrinter::preview(QWidget& window)
{
    // Recreated each time so that it sees the current printers.
    m_preview = std::make_unique<PrintPreviewController>(
        m_tensioManager, m_panels, m_alerts, m_pageLayout, window);
    // Queued: the preview still runs when it reports that it has closed.
    QObject::connect(
        m_preview.get(), &PrintPreviewController::closed, m_preview.get(),
        [this] { m_preview.reset(); }, Qt::QueuedConnection);
    return *m_preview;
}

} // namespace tensio
