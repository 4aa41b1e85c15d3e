#include "toolkit/Colors.h"

namespace tensio {

QColor colorFromHexString(QString const& text)
{
    auto const name = text.startsWith(u'#') ? text : u'#' + text;
    auto const color = QColor::fromString(name);
    return name.size() == 7 && color.isValid() ? color : QColor(Qt::black);
}

} // namespace tensio
