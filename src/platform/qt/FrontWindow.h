#pragma once

class QWidget;

namespace tensio {

// The window that a panel or an alert belongs to; none when no window is open.
QWidget* frontWindow();

} // namespace tensio
