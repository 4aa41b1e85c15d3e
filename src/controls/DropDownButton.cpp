#include "controls/DropDownButton.h"

#include <QStyleOptionButton>
#include <QStylePainter>

namespace tensio {

void DropDownButton::setTextColor(QColor const& color)
{
    m_textColor = color;
    update();
}

void DropDownButton::paintEvent(QPaintEvent* event)
{
    bool const keepsPlatformLook = !m_textColor.isValid() || !isEnabled();
    if (keepsPlatformLook) {
        MenuButton::paintEvent(event);
        return;
    }
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    // A style sheet decides the colour of a button's text, so the title is drawn over a button
    // without one.
    option.text.clear();
    painter.drawControl(QStyle::CE_PushButton, option);
    painter.setPen(m_textColor);
    painter.drawText(rect(), Qt::AlignCenter, text());
}

} // namespace tensio
