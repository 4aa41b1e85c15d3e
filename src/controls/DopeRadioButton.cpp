#include "controls/DopeRadioButton.h"

#include "toolkit/Colors.h"
#include "toolkit/DesignFrame.h"

#include <QPainter>

namespace tensio {

DopeRadioButton::DopeRadioButton(QWidget* parent)
    : QPushButton(parent)
{
    setCheckable(true);
    setAutoExclusive(true);
    setAutoDefault(false);
    setAttribute(Qt::WA_Hover);
}

void DopeRadioButton::setBgImageName(QString const& name)
{
    m_bgImage = Picture::named(name);
    updateGeometry();
    update();
}

QSize DopeRadioButton::sizeHint() const
{
    return m_bgImage ? m_bgImage->size().toSize() : QPushButton::sizeHint();
}

void DopeRadioButton::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(isEnabled() ? 1.0 : 0.45);
    QRectF textRect = rect();
    if (isChecked() && m_bgImage) {
        textRect = QRectF(QPointF(0.0, 0.0), m_bgImage->size() * scaleOf(*this));
        m_bgImage->draw(painter, textRect);
    }
    painter.setPen(isChecked() ? Qt::red : Qt::white);
    painter.setFont(font());
    painter.drawText(textRect, Qt::AlignCenter, text());

    bool const isMarked = isEnabled() && (hasFocus() || underMouse() || isDown());
    if (isMarked) {
        painter.setBrush(isDown() ? colors::pressedGround : QColor(Qt::transparent));
        painter.setPen(hasFocus() ? QPen(colors::focusRing, 3.0) : QPen(Qt::white, 1.0));
        painter.drawRoundedRect(QRectF(rect()).adjusted(1.5, 1.5, -1.5, -1.5), 6.0, 6.0);
    }
}

} // namespace tensio
