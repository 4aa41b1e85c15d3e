#pragma once

#include "toolkit/OnEvent.h"

#include <QWidget>
#include <QWindow>

namespace tensio {

// Lets every window take the size that a Wayland compositor gives it, also one above the maximum of
// its widget: the title bars that Qt draws offer to maximize even a window of a fixed size, and
// some compositors kill a client that ignores the size. As long as the owner lives.
inline void takeSizesOfCompositor(QObject& application, QObject& owner)
{
    // By then Qt has given the window the limits of its widget.
    onEvent(application, {QEvent::Expose}, owner, [](QObject& receiver) {
        if (auto* window = qobject_cast<QWindow*>(&receiver))
            window->setMaximumSize(QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
    });
}

} // namespace tensio
