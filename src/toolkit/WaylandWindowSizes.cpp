#include "toolkit/WaylandWindowSizes.h"

#include <QCoreApplication>
#include <QEvent>
#include <QWidget>
#include <QWindow>

namespace tensio {

WaylandWindowSizes::WaylandWindowSizes(QCoreApplication& application)
    : QObject(&application)
{
    application.installEventFilter(this);
}

bool WaylandWindowSizes::eventFilter(QObject* watched, QEvent* event)
{
    // By now Qt has given the window the limits of its widget.
    auto* window = event->type() == QEvent::Expose ? qobject_cast<QWindow*>(watched) : nullptr;
    if (window)
        window->setMaximumSize(QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
    return false;
}

} // namespace tensio
