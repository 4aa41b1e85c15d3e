#include "platform/qt/FrontWindow.h"

#include <QApplication>
#include <QWidget>

namespace tensio {

QWidget* frontWindow()
{
    // A dialog may be open without being the active window, when the user looks at another program.
    if (auto* modal = QApplication::activeModalWidget())
        return modal;
    if (auto* active = QApplication::activeWindow())
        return active;
    // Under Wayland no window need be active, not even when one has just been clicked.
    for (auto* widget : QApplication::topLevelWidgets()) {
        if (widget->isVisible() && widget->windowType() == Qt::Window)
            return widget;
    }
    return nullptr;
}

} // namespace tensio
