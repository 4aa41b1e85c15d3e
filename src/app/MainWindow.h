#pragma once

#include <QMainWindow>

namespace tensio {

// A plain window that tells when its content has another size and when it is first shown.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    MainWindow();

    QWidget& contentView() { return *m_contentView; }

Q_SIGNALS:
    void willAppear();
    void willLayout(QSize contentSize);

protected:
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* m_contentView;
};

} // namespace tensio
