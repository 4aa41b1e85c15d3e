#pragma once

#include <QWidget>

namespace tensio {

// Dims the whole window behind the user information dialog.
class CoverView : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace tensio
