#pragma once

#include "controls/MenuButton.h"

namespace tensio {

// A button whose title has a colour of its own; it opens its menu.
class DropDownButton : public MenuButton {
    Q_OBJECT
    Q_PROPERTY(QColor textColor READ textColor WRITE setTextColor)

public:
    using MenuButton::MenuButton;

    // Invalid by default: the title looks as on other buttons.
    QColor textColor() const { return m_textColor; }
    void setTextColor(QColor const& color);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor m_textColor;
};

} // namespace tensio
