#include "printing/PrintPreview.h"

#include "controls/DopeRadioButton.h"
#include "core/SavingMessages.h"
#include "core/TensioManager.h"
#include "platform/Alerts.h"
#include "printing/PageDrawing.h"
#include "printing/PrintPanels.h"
#include "toolkit/Accessible.h"
#include "toolkit/Buttons.h"
#include "toolkit/Colors.h"
#include "toolkit/DesignFrame.h"
#include "toolkit/WindowSize.h"
#include "ui_PrintPreview.h"

#include <QGraphicsEffect>
#include <QGraphicsItem>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QPageRanges>
#include <QPainter>
#include <QPainterPath>
#include <QPrintPreviewWidget>
#include <QPrinter>

#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace tensio {

namespace {
// Room for its bars and half a page at scale 1.
constexpr QSize smallestSize(1000, 460);

// Draws a fine edge around a page, and the background over the hard black shadow that the preview
// draws to the right of and below it. An effect, since the preview takes every item for a page.
class PageEdge : public QGraphicsEffect {
public:
    PageEdge(QRectF const& paper, QBrush const& background)
        : m_paper(paper)
        , m_background(background)
    {
    }

protected:
    void draw(QPainter* painter) override
    {
        drawSource(painter);
        // Wider than Qt's, which depends on the paper's width alone.
        auto const shadow = m_paper.width() / 50.0;
        QPainterPath around;
        around.addRect(m_paper.adjusted(0.0, 0.0, shadow, shadow));
        around.addRect(m_paper);
        painter->fillPath(around, m_background);
        painter->setBrush(Qt::NoBrush);
        painter->setPen(QPen(colors::border, 0.0));
        painter->drawRect(m_paper);
    }

private:
    QRectF m_paper;
    QBrush m_background;
};

std::array<QPushButton*, 4> zoomButtons(Ui::PrintPreview const& ui)
{
    return {ui.zoomOutButton, ui.zoomInButton, ui.fitPageButton, ui.fitWidthButton};
}

} // namespace

PrintPreview::PrintPreview(PrintingServices const& services, QWidget& parent)
    : QDialog(&parent)
    , m_services(services)
    , m_printer(std::make_unique<QPrinter>(QPrinter::HighResolution))
    , m_ui(std::make_unique<Ui::PrintPreview>())
{
    m_ui->setupUi(this);
    setAttribute(Qt::WA_DeleteOnClose);
    scaleLayouts(*this, dialogScale(smallestSize, scaleOfContent(parent), availableSize(parent)));
    resize(size().boundedTo(availableSize(parent).shrunkBy(assumedFrame)));
    m_printer->setCreator(u"tensio"_s);
    m_printer->setPageLayout(m_services.pageLayout);
    addPages();
    connectButtons();
}

PrintPreview::~PrintPreview()
{
    // Before the printer that it shows.
    delete m_preview;
}

void PrintPreview::connectButtons()
{
    auto const onClick = [this](QAbstractButton* button, auto work) {
        connect(button, &QAbstractButton::clicked, this, work);
    };
    onClick(m_ui->listButton, [this] { choose(ReportKind::List); });
    onClick(m_ui->gridButton, [this] { choose(ReportKind::Grid); });
    onClick(m_ui->selectedButton, [this] { choose(ReportKind::Selected); });
    onClick(m_ui->curvesButton, [this] { choose(ReportKind::Curves); });
    onClick(m_ui->previousButton, [this] { turnPage(-1); });
    onClick(m_ui->nextButton, [this] { turnPage(+1); });
    onClick(m_ui->zoomInButton, [this] { m_preview->zoomIn(); });
    onClick(m_ui->zoomOutButton, [this] { m_preview->zoomOut(); });
    onClick(m_ui->fitPageButton, [this] {
        // Qt leaves a page that is wholly visible as it is.
        m_preview->fitToWidth();
        m_preview->fitInView();
    });
    onClick(m_ui->fitWidthButton, [this] { m_preview->fitToWidth(); });
    for (auto* button : zoomButtons(*m_ui))
        onClick(button, [this] { showPosition(); });
    onClick(m_ui->pageSetupButton, [this] { setUpPage(); });
    onClick(m_ui->savePdfButton, [this] { m_services.tensioManager.saveViewAsPdf(*m_view); });
    onClick(m_ui->printButton, [this] { print(); });
    onClick(m_ui->closeButton, [this] { close(); });
}

void PrintPreview::addPages()
{
    m_preview = new QPrintPreviewWidget(m_printer.get(), m_ui->pageArea);
    m_ui->pageAreaLayout->addWidget(m_preview);
    m_pages = m_preview->findChild<QGraphicsView*>();
    m_pages->scene()->setBackgroundBrush(colors::desk);
    setAccessibleRole(*m_pages, QAccessible::Document);
    m_pages->setAccessibleName(u"印刷されるページ"_s);
    QWidget::setTabOrder(m_ui->fitWidthButton, m_pages);
    QWidget::setTabOrder(m_pages, m_ui->pageSetupButton);
    connect(m_preview, &QPrintPreviewWidget::paintRequested, this,
        [this](QPrinter* printer) { showPages(*printer); });
    // Queued: while the preview moves to another page, it briefly reports the last one.
    connect(m_preview, &QPrintPreviewWidget::previewChanged, this, &PrintPreview::showPosition,
        Qt::QueuedConnection);
}

void PrintPreview::showReport(ReportKind kind)
{
    bool const isSelected = hasReport(ReportKind::Selected, m_services.tensioManager);
    m_ui->selectedButton->setEnabled(isSelected);
    m_ui->selectedButton->setToolTip(isSelected ? QString() : u"履歴で測定を選ぶと使えます"_s);
    m_ui->listButton->setChecked(kind == ReportKind::List);
    m_ui->gridButton->setChecked(kind == ReportKind::Grid);
    m_ui->selectedButton->setChecked(kind == ReportKind::Selected);
    m_ui->curvesButton->setChecked(kind == ReportKind::Curves);
    choose(kind);
    appear();
}

void PrintPreview::showReport(std::unique_ptr<PrintView> view, QString const& title)
{
    for (auto* choice : findChildren<DopeRadioButton*>())
        choice->hide();
    setWindowTitle(windowTitle() + u" — "_s + title);
    setView(std::move(view));
    appear();
}

void PrintPreview::appear()
{
    show();
    m_preview->fitToWidth();
    focusNextStep();
}

void PrintPreview::focusNextStep()
{
    bool const canPrint = m_ui->printButton->isEnabled();
    (canPrint ? m_ui->printButton : m_ui->pageSetupButton)->setFocus();
}

void PrintPreview::choose(ReportKind kind)
{
    setView(makeReport(kind, m_services.tensioManager));
}

void PrintPreview::setView(std::unique_ptr<PrintView> view)
{
    m_view = std::move(view);
    m_printer->setDocName(reportTitle(m_view->isSimulated()));
    refresh();
}

void PrintPreview::refresh()
{
    m_preview->updatePreview();
    QRectF const paper = m_printer->pageLayout().fullRectPixels(m_printer->resolution());
    for (auto* page : m_pages->scene()->items())
        page->setGraphicsEffect(new PageEdge(paper, m_pages->scene()->backgroundBrush()));
}

void PrintPreview::showPages(QPrinter& printer)
{
    bool const isDrawn = drawPages(*m_view, printer);
    m_ui->printButton->setEnabled(isDrawn);
    m_ui->savePdfButton->setEnabled(isDrawn);
    // The preview fades what stands in the margins.
    m_ui->messageLabel->setText(
        QString::fromUtf8(isDrawn ? simulatedMessage : paperTooSmallMessage));
    m_ui->messageLabel->setVisible(!isDrawn || m_view->isSimulated());
    // Where nothing is drawn, the preview would keep the old pages.
    m_preview->setVisible(isDrawn);
    m_ui->positionLabel->setVisible(isDrawn);
    m_ui->zoomLabel->setVisible(isDrawn);
    for (auto* button : zoomButtons(*m_ui))
        button->setEnabled(isDrawn);
}

void PrintPreview::showPosition()
{
    int const page = m_preview->currentPage();
    int const count = m_preview->pageCount();
    auto const position = u"%1 / %2 ページ"_s.arg(page).arg(count);
    m_ui->positionLabel->setText(position);
    setAccessibleDescriptionIfChanged(*m_pages, position);
    bool const isDrawn = m_preview->isVisibleTo(this);
    enableButtonPair(
        *m_ui->previousButton, isDrawn && page > 1, *m_ui->nextButton, isDrawn && page < count);
    setLabelText(*m_ui->zoomLabel, u"%1%"_s.arg(qRound(m_preview->zoomFactor() * 100.0)));
}

void PrintPreview::turnPage(int step)
{
    m_preview->setCurrentPage(m_preview->currentPage() + step);
    showPosition();
}

void PrintPreview::setUpPage()
{
    m_services.panels.openPageSetup(*m_printer, *this, [this] {
        m_services.pageLayout = m_printer->pageLayout();
        refresh();
    });
}

void PrintPreview::print()
{
    if (!m_services.panels.hasPrinters()) {
        m_services.alerts.runModal(AlertStyle::Warning,
            "使用できるプリンターがありません。\n"
            "プリンターを接続するか、「PDFとして保存」をお使いください。",
            {"OK"});
        return;
    }
    m_services.panels.openPrint(*m_printer, m_preview->pageCount(), *this, [this] {
        // The panel may have changed the paper, and asked for some pages only.
        m_services.pageLayout = m_printer->pageLayout();
        bool const hasRoom = hasPages(*m_view, m_services.pageLayout);
        if (hasRoom && drawPages(*m_view, *m_printer)) {
            close();
            return;
        }
        m_printer->setPageRanges({});
        refresh();
        focusNextStep();
        m_services.alerts.runModal(
            AlertStyle::Warning, hasRoom ? printFailedMessage : paperTooSmallMessage, {"OK"});
    });
}

} // namespace tensio
