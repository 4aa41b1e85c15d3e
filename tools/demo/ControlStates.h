#pragma once

#include <QString>

class QWidget;

namespace tensio {

class Stage;

// Pictures a window with all its controls in each state at once, which no user sees: resting, under
// the mouse, pressed, disabled, with the keyboard.
void showControlStates(Stage const& stage, QWidget& window, QString const& prefix);

} // namespace tensio
