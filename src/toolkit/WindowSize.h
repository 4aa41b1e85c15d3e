#pragma once

#include <QMargins>
#include <QSize>

class QWidget;

namespace tensio {

// What a title bar and borders take where they are not known before a window is shown.
constexpr QMargins assumedFrame {4, 38, 4, 4};

// The size at which a window opens on the design: as designed or smaller where the screen is small,
// up to 80 % of a large screen. With the menu bar, without the frame.
QSize openingSize(QSize design, QSize available, int menuHeight);

// The scale of a dialog that needs that much room: as large as the window it belongs to, but
// neither too small to read nor larger than the screen.
double dialogScale(QSize design, double openerScale, QSize available);

// The part of the window's screen that windows may take.
QSize availableSize(QWidget const& window);

} // namespace tensio
