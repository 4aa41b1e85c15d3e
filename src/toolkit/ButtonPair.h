#pragma once

class QAbstractButton;

namespace tensio {

// Enables either of a pair of buttons, or both; if the one with the focus is disabled, the other
// gets the focus, not the control that comes next.
void enableButtonPair(
    QAbstractButton& first, bool isFirstEnabled, QAbstractButton& second, bool isSecondEnabled);

} // namespace tensio
