#include "platform/qt/SessionCopy.h"

#include "platform/qt/SessionDatabase.h"
#include "platform/qt/SessionTables.h"

#include <algorithm>
#include <utility>

namespace tensio {

SessionCopy::SessionCopy(SessionDatabase& database, QString from, QString to)
    : m_database(database)
    , m_from(std::move(from))
    , m_to(std::move(to))
{
    m_version = static_cast<int>(
        number(QStringLiteral("PRAGMA %1.user_version").arg(m_from)).value_or(0));
    m_total = number(QStringLiteral("SELECT count(*) FROM %1.session").arg(m_from)).value_or(0);
    auto const last = number(QStringLiteral("SELECT max(session) FROM %1.measurement").arg(m_from));
    m_lastSession = last
        ? *last
        : number(QStringLiteral("SELECT max(seq) FROM %1.sqlite_sequence").arg(m_from)).value_or(0);
}

bool SessionCopy::isPossible()
{
    // There is no session 0.
    return copyHead() == 0 && copyMeasurements(0) && !m_hasMetDamage;
}

bool SessionCopy::next()
{
    if (m_hasFailed || !findNext())
        return false;
    ++m_seen;
    auto const copy = copyHead();
    if (copy != 0 && copyMeasurements(copy))
        ++m_count;
    return !m_hasFailed;
}

double SessionCopy::progress() const
{
    return static_cast<double>(std::min(m_seen, m_total))
        / static_cast<double>(std::max(m_total, 1LL));
}

bool SessionCopy::findNext()
{
    auto const found = number(
        QStringLiteral("SELECT min(id) FROM %1.session WHERE id > ?").arg(m_from), {m_session});
    // Past damage, each number that there may be.
    m_session = found.value_or(m_session + 1);
    return found ? m_session != 0 : !m_hasFailed && m_session <= m_lastSession;
}

SessionId SessionCopy::copyHead()
{
    auto const columns = QStringLiteral(
        "start, ended, name, target, percent, simulated, saved, aside, count, best");
    bool const hadMetDamage = std::exchange(m_hasMetDamage, false);
    auto copy = insertHead(QStringLiteral("INSERT OR IGNORE INTO %1.session (%2, identity) SELECT "
                                          "%2, %3 FROM %4.session WHERE id = ? AND count > 0")
                               .arg(m_to, columns, identityColumn(m_version), m_from),
        {m_session});
    if (m_hasMetDamage) {
        // Another name for each: they are not one person.
        auto const name = QStringLiteral("氏名不明 %1").arg(m_session);
        copy = insertHead(
            QStringLiteral(
                "INSERT INTO %1.session (start, name, target, percent, simulated, count, best, "
                "identity) "
                "SELECT min(time), ?, 0.0, 1.0, 0, max(number), max(best), "
                "lower(hex(randomblob(16))) FROM %2.measurement WHERE session = ? GROUP BY session")
                .arg(m_to, m_from),
            {name, m_session});
    }
    m_hasMetDamage = m_hasMetDamage || hadMetDamage;
    return copy;
}

SessionId SessionCopy::insertHead(QString const& statement, QVariantList const& values)
{
    auto* const inserted = run(statement, values);
    bool const isNew = inserted && inserted->numRowsAffected() > 0;
    return isNew ? inserted->lastInsertId().toLongLong() : 0;
}

bool SessionCopy::copyMeasurements(SessionId copy)
{
    auto const measurements
        = QStringLiteral("INSERT OR IGNORE INTO %1.measurement SELECT ?, number, best, target, "
                         "time, finished FROM %2.measurement WHERE session = ?")
              .arg(m_to, m_from);
    auto const points = QStringLiteral("INSERT OR IGNORE INTO %1.points SELECT ?, number, first, "
                                       "kpa FROM %2.points WHERE session = ?")
                            .arg(m_to, m_from);
    if (run(measurements, {copy, m_session}) && run(points, {copy, m_session}))
        return true;
    // One after the other, past the damage.
    auto const count
        = number(QStringLiteral("SELECT count FROM %1.session WHERE id = ?").arg(m_to), {copy})
              .value_or(0);
    auto const one = QStringLiteral(" AND number = ?");
    for (SessionId each = 1; each <= count && !m_hasFailed; ++each) {
        for (auto const& statement : {measurements, points})
            run(statement + one, {copy, m_session, each});
    }
    return !m_hasFailed;
}

std::optional<SessionId> SessionCopy::number(QString const& statement, QVariantList const& values)
{
    auto* const row = run(statement, values);
    if (!row)
        return std::nullopt;
    SessionId const found = row->next() ? row->value(0).toLongLong() : 0;
    row->finish();
    return found;
}

QSqlQuery* SessionCopy::run(QString const& statement, QVariantList const& values)
{
    auto* const query = m_database.run(statement, values);
    if (query)
        return query;
    bool const isDamage = m_database.refusal() == StoreProblem::Damaged;
    m_hasMetDamage = m_hasMetDamage || isDamage;
    m_hasFailed = m_hasFailed || !isDamage;
    return nullptr;
}

} // namespace tensio
