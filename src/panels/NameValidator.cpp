#include "panels/NameValidator.h"

#include <QRegularExpression>

#include <algorithm>

namespace tensio {

QValidator::State NameValidator::validate(QString& name, int& cursor) const
{
    // \v is any line break.
    static QRegularExpression const around(QStringLiteral("\\A[\\t\\v]+|[\\t\\v]+\\z"));
    static QRegularExpression const within(QStringLiteral("[\\t\\v]+"));
    auto const afterCursor = name.size() - cursor;
    name.remove(around).replace(within, QStringLiteral(" "));
    cursor = static_cast<int>(std::max(name.size() - afterCursor, qsizetype {0}));
    return Acceptable;
}

} // namespace tensio
