#include "toolkit/GrantedSizes.h"

#include <QCoreApplication>
#include <QEvent>
#include <QWidget>
#include <QWindow>

namespace tensio {

GrantedSizes::GrantedSizes(QCoreApplication& application)
    : QObject(&application)
{
    application.installEventFilter(this);
}

bool GrantedSizes::eventFilter(QObject* watched, QEvent* event)
{
    // Now it is on the screen, with the limits of its widget.
    auto* window = event->type() == QEvent::Expose ? qobject_cast<QWindow*>(watched) : nullptr;
    if (window)
        window->setMaximumSize(QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
    return false;
}

} // namespace tensio
