#include "toolkit/ImageView.h"

#include "toolkit/DesignFrame.h"

#include <QPainter>

#include <utility>

namespace tensio {

void ImageView::setPicture(Picture picture)
{
    m_picture = std::move(picture);
    updateAround(*this);
}

void ImageView::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    m_picture.draw(painter, rect());
}

} // namespace tensio
