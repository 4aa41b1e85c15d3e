#pragma once

#include <QMainWindow>

namespace tensio {

// A plain window that reports when it is about to be shown by the program, and when its content has
// been resized.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    MainWindow();

    QWidget& contentView() { return *m_contentView; }

Q_SIGNALS:
    void willAppear();
    void contentResized();

protected:
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* m_contentView;
};

} // namespace tensio
