#pragma once

#include <QMainWindow>

namespace tensio {

// A plain window that reports when it is about to be shown by the program.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    MainWindow();

    QWidget& contentView() { return *m_contentView; }

Q_SIGNALS:
    void willAppear();

protected:
    void showEvent(QShowEvent* event) override;

private:
    QWidget* m_contentView;
};

} // namespace tensio
