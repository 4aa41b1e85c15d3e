#include "toolkit/ButtonAction.h"

#include <QAbstractButton>
#include <QEvent>

namespace tensio {

ButtonAction::ButtonAction(QAbstractButton& button, QString const& title, QKeySequence const& key)
    : QAction(title, &button)
    , m_button(button)
{
    setShortcut(key);
    // A key held down counts as one press.
    setAutoRepeat(false);
    setEnabled(button.isEnabled());
    button.installEventFilter(this);
    connect(this, &QAction::triggered, &button, &QAbstractButton::click);
}

bool ButtonAction::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::EnabledChange)
        setEnabled(m_button.isEnabled());
    return QAction::eventFilter(watched, event);
}

} // namespace tensio
