#pragma once

#include "toolkit/Accessible.h"
#include "toolkit/Picture.h"

#include <QWidget>

namespace tensio {

// Shows one picture, scaled to its frame.
class ImageView
    : public QWidget
    , public Accessible {
    Q_OBJECT

public:
    using QWidget::QWidget;

    Picture const& picture() const { return m_picture; }
    void setPicture(Picture picture);

    QAccessible::Role accessibleRole() const override { return QAccessible::Graphic; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Picture m_picture;
};

} // namespace tensio
