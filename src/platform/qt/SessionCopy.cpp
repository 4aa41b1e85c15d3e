#include "platform/qt/SessionCopy.h"

#include "platform/qt/SessionTables.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tensio {

SessionCopy::SessionCopy(SessionDatabase& database, QLatin1StringView from, QLatin1StringView to)
    : m_database(database)
    , m_from(from)
    , m_to(to)
    , m_version(
          static_cast<int>(database.number(u"PRAGMA %1.user_version"_s.arg(from)).value_or(0)))
{
    auto const take = [this](QSqlQuery const& row) { m_rest.insert(row.value(0).toLongLong()); };
    // What damage hides in one table shows in the other: each session has a measurement.
    if (!note(database.read(u"SELECT id FROM %1.session"_s.arg(from), {}, take)))
        database.read(u"SELECT DISTINCT session FROM %1.measurement"_s.arg(from), {}, take);
    m_total = m_rest.size();
}

bool SessionCopy::next()
{
    if (m_rest.empty())
        return false;
    auto const session = m_rest.extract(m_rest.begin()).value();
    if (auto const copy = copyHead(session); copy != 0) {
        copyMeasurements(session, copy);
        ++m_count;
    }
    return canGoOn();
}

double SessionCopy::progress() const
{
    auto const total = static_cast<double>(std::max<std::size_t>(m_total, 1));
    return 1.0 - static_cast<double>(m_rest.size()) / total;
}

SessionId SessionCopy::copyHead(SessionId session)
{
    auto const columns
        = u"start, ended, name, target, percent, simulated, saved, aside, count, best"_s;
    auto head = query(u"INSERT OR IGNORE INTO %1.session (%2, identity) SELECT %2, %3 FROM "
                      "%4.session WHERE id = ? AND count > 0"_s.arg(
                          m_to, columns, identityColumn(m_version), m_from),
        {session});
    if (!head.isActive()) {
        // Another name for each: they are not one person, and may be simulated.
        head = query(
            u"INSERT INTO %1.session (start, name, target, percent, simulated, count, best, "
            "identity) SELECT min(time), ?, 0.0, 1.0, 0, max(number), max(best), "
            "lower(hex(randomblob(16))) FROM %2.measurement WHERE session = ? GROUP BY session"_s
                .arg(m_to, m_from),
            {u"氏名・装置不明 %1"_s.arg(session), session});
    }
    return head.numRowsAffected() > 0 ? head.lastInsertId().toLongLong() : 0;
}

void SessionCopy::copyMeasurements(SessionId session, SessionId copy)
{
    auto const measurements
        = u"INSERT OR IGNORE INTO %1.measurement SELECT ?, number, best, target, time, finished "
          "FROM %2.measurement WHERE session = ?"_s.arg(m_to, m_from);
    auto const points = u"INSERT OR IGNORE INTO %1.points SELECT ?, number, first, kpa FROM "
                        "%2.points WHERE session = ?"_s.arg(m_to, m_from);
    if (query(measurements, {copy, session}).isActive()
        && query(points, {copy, session}).isActive())
        return;
    std::vector<int> numbers;
    readMeasurements(m_database, m_from, session,
        [&](QSqlQuery const& row) { numbers.push_back(row.value(0).toInt()); });
    for (auto const each : numbers) {
        for (auto const& statement : {measurements, points})
            query(statement + u" AND number = ?"_s, {copy, session, each});
    }
}

QSqlQuery SessionCopy::query(QString const& statement, QVariantList const& values)
{
    QSqlQuery query;
    // What could not be written has ended the transaction: more would stay in the store.
    if (canGoOn()) {
        query = m_database.query(statement, values);
        note(query.isActive());
    }
    return query;
}

bool SessionCopy::note(bool isDone)
{
    if (!isDone && canGoOn())
        m_problem = m_database.refusal();
    return isDone;
}

bool SessionCopy::canGoOn() const
{
    return m_problem == StoreProblem::None || m_problem == StoreProblem::Damaged;
}

} // namespace tensio
