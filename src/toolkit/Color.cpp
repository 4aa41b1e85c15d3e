#include "toolkit/Color.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace tensio {

QColor colorFromHexString(QString const& text)
{
    static QRegularExpression const pattern(u"\\A#?([0-9a-fA-F]{6})\\z"_s);
    auto const match = pattern.match(text);
    return match.hasMatch() ? QColor::fromRgb(match.captured(1).toUInt(nullptr, 16) | 0xff000000u)
                            : QColor(Qt::black);
}

} // namespace tensio
