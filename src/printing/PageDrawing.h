#pragma once

#include "platform/PrintView.h"

#include <QPageLayout>

class QPagedPaintDevice;

namespace tensio {

// Title of PDF files and print jobs.
QString reportTitle(bool isSimulated);

// A4 with margins of 72 points.
QPageLayout defaultPageLayout();

PrintInfo printInfo(QPageLayout const& layout);

// Paginates the view; true if it has at least one page on that paper.
bool hasPages(PrintView& view, QPageLayout const& layout);

// Draws the pages that the device's page ranges ask for, marked where they are simulated; false
// when there is none on its paper, the device cannot be drawn on, or it refuses a further page.
bool drawPages(PrintView& view, QPagedPaintDevice& device);

} // namespace tensio
