#pragma once

#include <QString>

class QVariant;
class QWidget;

namespace tensio {

// The look of the program for a scale: the style sheet of the resources, its lengths ("8u") in
// pixels.
QString styleSheet(double scale);

// Sets a dynamic property by which the style sheet chooses the widget's look.
void setLookProperty(QWidget& widget, char const* name, QVariant const& value);

} // namespace tensio
