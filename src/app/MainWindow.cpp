#include "app/MainWindow.h"

#include <QShowEvent>

namespace tensio {

MainWindow::MainWindow()
{
    setCentralWidget(new QWidget);
    contentView().setBackgroundRole(QPalette::Base);
    contentView().setAutoFillBackground(true);
}

void MainWindow::showEvent(QShowEvent* event)
{
    if (!event->spontaneous())
        Q_EMIT willAppear();
    QMainWindow::showEvent(event);
}

} // namespace tensio
