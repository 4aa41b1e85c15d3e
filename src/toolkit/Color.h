#pragma once

#include <QColor>
#include <QString>

namespace tensio {

// "rrggbb", optionally after a "#", as an opaque colour; black when the text does not read as
// hexadecimal.
QColor colorFromHexString(QString const& text);

} // namespace tensio
