#include "panels/UserInfoWindow.h"

#include <QShowEvent>

namespace tensio {

UserInfoWindow::UserInfoWindow(QWidget& mainWindow)
    : QDialog(&mainWindow)
{
    setWindowModality(Qt::WindowModal);
}

void UserInfoWindow::showEvent(QShowEvent* event)
{
    if (!event->spontaneous())
        Q_EMIT willAppear();
    QDialog::showEvent(event);
}

void UserInfoWindow::hideEvent(QHideEvent* event)
{
    if (!event->spontaneous())
        Q_EMIT willDisappear();
    QDialog::hideEvent(event);
}

} // namespace tensio
