#include "printing/PageDrawing.h"

#include "core/SavingMessages.h"
#include "printing/QtPrintCanvas.h"

#include <QPageRanges>
#include <QPagedPaintDevice>
#include <QPainter>

#include <algorithm>
#include <vector>

using namespace Qt::StringLiterals;

namespace tensio {

namespace {

constexpr double pointsPerInch = 72.0;
constexpr double margin = 72.0;

std::vector<int> wantedPages(QPageRanges const& ranges, int count)
{
    std::vector<int> pages;
    for (int page = 1; page <= count; ++page) {
        if (ranges.isEmpty() || ranges.contains(page))
            pages.push_back(page);
    }
    return pages;
}

// In the larger of the margins above and below the layout, which the mark leaves as it is.
void markSimulated(PrintCanvas& canvas, PrintInfo const& info)
{
    constexpr double leastHeight = 10.0;
    bool const isAbove = info.topMargin >= info.bottomMargin;
    double const height = std::max(leastHeight, isAbove ? info.topMargin : info.bottomMargin);
    canvas.drawText({0.0, isAbove ? 0.0 : info.paperHeight - height, info.paperWidth, height},
        {std::min(10.0, height - 2.0), TextAlignment::Centre, Ink::Target, true}, simulatedMessage);
}

} // namespace

QString reportTitle(bool isSimulated)
{
    return isSimulated ? u"舌圧測定結果（模擬装置：実際の測定ではありません）"_s
                       : u"舌圧測定結果"_s;
}

QPageLayout defaultPageLayout()
{
    return {QPageSize(QPageSize::A4), QPageLayout::Portrait,
        QMarginsF(margin, margin, margin, margin), QPageLayout::Point};
}

PrintInfo printInfo(QPageLayout const& layout)
{
    auto const paper = layout.fullRect(QPageLayout::Point);
    auto const margins = layout.margins(QPageLayout::Point);
    return {paper.width(), paper.height(), margins.left(), margins.top(), margins.right(),
        margins.bottom()};
}

bool hasPages(PrintView& view, QPageLayout const& layout)
{
    return view.paginate(printInfo(layout), QtPrintCanvas()) > 0;
}

bool drawPages(PrintView& view, QPagedPaintDevice& device)
{
    auto const info = printInfo(device.pageLayout());
    auto const count = view.paginate(info, QtPrintCanvas());
    auto const pages = wantedPages(device.pageRanges(), count);
    QPainter painter;
    if (pages.empty() || !painter.begin(&device))
        return false;
    // For the preview, whose resolution is low.
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(device.logicalDpiX() / pointsPerInch, device.logicalDpiY() / pointsPerInch);
    // The origin of a view is the corner of the paper; a device may start at its margins.
    painter.translate(-device.pageLayout().paintRect(QPageLayout::Point).topLeft());
    QtPrintCanvas canvas(&painter);
    for (int const page : pages) {
        if (page != pages.front() && !device.newPage())
            return false;
        view.rectForPage(page);
        view.draw(canvas);
        if (view.isSimulated())
            markSimulated(canvas, info);
    }
    return painter.end();
}

} // namespace tensio
