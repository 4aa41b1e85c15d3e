#pragma once

#include <QRect>
#include <QTransform>

class QWidget;

namespace tensio {

// Widgets keep their place in units of the 1040 × 692 design; their geometry on the screen is
// recomputed from it at each change of scale, so that native focus, pop-ups, input methods and
// screen readers keep working.

// The frame in the parent's design coordinates, y downwards.
QRectF designFrame(QWidget const& widget);

// Places the widget at the scale that its tree is shown at.
void setDesignFrame(QWidget& widget, QRectF frame);

// Repaints the widget and what touches it. At a fractional device pixel ratio Qt does not bring
// pixels to the screen that belong to the repainted area only in part, such as the widget's edges.
void updateAround(QWidget& widget);

// The scale that the widget or the nearest ancestor was given by scaleDesign or scaleLayouts; 1
// until then.
double scaleOf(QWidget const& widget);

// Looks downwards: the scale of the design inside the window; 1 without one.
double scaleOfContent(QWidget const& window);

// Gives the root and all widgets in it their size, icon and style for the scale. The root's
// position is its owner's.
void scaleDesign(QWidget& root, double scale);

// The same for a window whose layouts place its controls; at scale 1 until then.
void scaleLayouts(QWidget& window, double scale);

// The nearest whole pixels. Edges are rounded, not sizes, so that neighbours stay neighbours and
// borders equally wide.
QRect wholePixels(QRectF rect);

// Maps design units with y growing upwards onto a surface of the given size.
QTransform designToSurface(QSizeF designSize, QSizeF surfaceSize);

} // namespace tensio
