#pragma once

#include "reactive/CocoaAction.h"
#include "toolkit/OnEvent.h"

#include <QAbstractButton>
#include <QAction>
#include <QShortcut>

namespace tensio {

// Each click runs the command, as long as the context lives.
inline void runOnClick(QAbstractButton& button, CocoaAction const& command, QObject const& context)
{
    QObject::connect(
        &button, &QAbstractButton::clicked, &context, [command] { command.execute(); });
}

// The key clicks the button while the widget has the keyboard's focus.
inline void clickOnKey(QAbstractButton& button, Qt::Key key, QWidget& focused)
{
    auto* shortcut = new QShortcut(key, &focused, nullptr, nullptr, Qt::WidgetShortcut);
    QObject::connect(shortcut, &QShortcut::activated, &button, &QAbstractButton::click);
}

// A menu's command that clicks the button, enabled while the button is. The button owns it.
inline QAction* makeMenuCommand(
    QAbstractButton& button, QString const& title, QKeySequence const& key)
{
    auto* command = new QAction(title, &button);
    command->setShortcut(key);
    // A key held down counts as one press.
    command->setAutoRepeat(false);
    auto const follow = [command, &button] { command->setEnabled(button.isEnabled()); };
    follow();
    onEvent(button, {QEvent::EnabledChange}, *command, [follow](QObject&) { follow(); });
    QObject::connect(command, &QAction::triggered, &button, &QAbstractButton::click);
    return command;
}

// Two buttons that step a value up and down: the keys do so while either has the focus.
inline void stepOnKeys(QAbstractButton& up, Qt::Key upKey, QAbstractButton& down, Qt::Key downKey)
{
    for (auto* focused : {&up, &down}) {
        clickOnKey(up, upKey, *focused);
        clickOnKey(down, downKey, *focused);
    }
}

// Enables either of a pair of buttons, or both; if the one with the focus is disabled, the other
// gets the focus, not the control that comes next.
inline void enableButtonPair(
    QAbstractButton& first, bool isFirstEnabled, QAbstractButton& second, bool isSecondEnabled)
{
    auto const moveFocus = [](QAbstractButton const& from, QAbstractButton& to) {
        to.setEnabled(true);
        // Also while another window is in front.
        if (from.window()->focusWidget() == &from)
            to.setFocus();
    };
    if (!isFirstEnabled && isSecondEnabled)
        moveFocus(first, second);
    if (isFirstEnabled && !isSecondEnabled)
        moveFocus(second, first);
    first.setEnabled(isFirstEnabled);
    second.setEnabled(isSecondEnabled);
}

} // namespace tensio
