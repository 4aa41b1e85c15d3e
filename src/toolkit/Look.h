#pragma once

class QApplication;

namespace tensio {

// Style, typeface, colours and icon of every window, and what custom-drawn widgets say to screen
// readers. Called before the first window is made.
void applyLook(QApplication& application);

} // namespace tensio
