#include "toolkit/StyleSheet.h"

#include <QFile>
#include <QRegularExpression>
#include <QStyle>
#include <QVariant>
#include <QWidget>

#include <algorithm>
#include <cmath>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace tensio {

QString styleSheet(double scale)
{
    QFile file(u":/look.qss"_s);
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("no style sheet in the resources");
    auto const design = QString::fromUtf8(file.readAll());

    static QRegularExpression const length(u"\\b(\\d+)u\\b"_s);
    QString result;
    qsizetype end = 0;
    for (auto const& match : length.globalMatch(design)) {
        result += design.mid(end, match.capturedStart() - end);
        auto const pixels = std::max(1L, std::lround(match.captured(1).toDouble() * scale));
        result += QString::number(pixels) + u"px"_s;
        end = match.capturedEnd();
    }
    return result + design.mid(end);
}

void setLookProperty(QWidget& widget, char const* name, QVariant const& value)
{
    widget.setProperty(name, value);
    widget.style()->unpolish(&widget);
    widget.style()->polish(&widget);
}

} // namespace tensio
