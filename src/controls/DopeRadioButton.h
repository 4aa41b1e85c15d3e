#pragma once

#include "toolkit/Picture.h"

#include <QPushButton>

#include <optional>

namespace tensio {

// One of several choices, custom-drawn: off, only its title in white, for a dark ground; on, a
// background picture with the title in red over it. Checking it unchecks its siblings.
class DopeRadioButton : public QPushButton {
    Q_OBJECT
    // Name of the picture among the resources; none by default.
    Q_PROPERTY(QString bgImageName READ bgImageName WRITE setBgImageName)

public:
    explicit DopeRadioButton(QWidget* parent = nullptr);

    QString bgImageName() const { return m_bgImage ? m_bgImage->name() : QString(); }
    void setBgImageName(QString const& name);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::optional<Picture> m_bgImage;
};

} // namespace tensio
