#include "app/MainWindow.h"

#include <QEvent>
#include <QShowEvent>

namespace tensio {

MainWindow::MainWindow()
    : m_contentView(new QWidget(this))
{
    m_contentView->installEventFilter(this);
    auto palette = m_contentView->palette();
    palette.setColor(QPalette::Window, Qt::white);
    m_contentView->setPalette(palette);
    m_contentView->setAutoFillBackground(true);
    setCentralWidget(m_contentView);
}

void MainWindow::showEvent(QShowEvent* event)
{
    if (!event->spontaneous())
        Q_EMIT willAppear();
    QMainWindow::showEvent(event);
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_contentView && event->type() == QEvent::Resize)
        Q_EMIT contentResized();
    return QMainWindow::eventFilter(watched, event);
}

} // namespace tensio
