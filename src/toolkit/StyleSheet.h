#pragma once

#include <QString>

namespace tensio {

// The look of the program for a scale: the style sheet of the resources, its lengths ("8u") in
// pixels.
QString styleSheet(double scale);

} // namespace tensio
