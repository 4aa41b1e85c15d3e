#include "app/CoverView.h"

#include <QPaintEvent>
#include <QPainter>

namespace tensio {

void CoverView::paintEvent(QPaintEvent* event)
{
    QPainter(this).fillRect(event->rect(), QColor::fromRgbF(0.0f, 0.0f, 0.0f, 0.5f));
}

} // namespace tensio
