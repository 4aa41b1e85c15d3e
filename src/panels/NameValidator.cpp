#include "panels/NameValidator.h"

#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tensio {

QValidator::State NameValidator::validate(QString& name, int& cursor) const
{
    // \v is any line break.
    static QRegularExpression const around(u"\\A[\\t\\v]+|[\\t\\v]+\\z"_s);
    static QRegularExpression const within(u"[\\t\\v]+"_s);
    auto const afterCursor = name.size() - cursor;
    name.remove(around).replace(within, u" "_s);
    cursor = static_cast<int>(std::max(name.size() - afterCursor, qsizetype {0}));
    return Acceptable;
}

} // namespace tensio
