#include "app/MainWindow.h"

#include <QShowEvent>

namespace tensio {

MainWindow::MainWindow()
    : m_contentView(new QWidget(this))
{
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

} // namespace tensio
