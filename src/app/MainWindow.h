#pragma once

#include <QMainWindow>

namespace tensio {

// A plain window that reports when it is about to be shown by the program.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    MainWindow();

    QWidget& contentView() { return *centralWidget(); }

Q_SIGNALS:
    void willAppear();

protected:
    void showEvent(QShowEvent* event) override;
};

} // namespace tensio
