#include "panels/UserInfoWindow.h"

namespace tensio {

UserInfoWindow::UserInfoWindow(QWidget& mainWindow)
    : QDialog(&mainWindow)
{
    setWindowModality(Qt::WindowModal);
}

void UserInfoWindow::showEvent(QShowEvent* event)
{
    Q_EMIT willAppear();
    QDialog::showEvent(event);
}

void UserInfoWindow::hideEvent(QHideEvent* event)
{
    Q_EMIT willDisappear();
    QDialog::hideEvent(event);
}

} // namespace tensio
