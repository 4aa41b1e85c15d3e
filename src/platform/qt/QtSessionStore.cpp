#include "platform/qt/QtSessionStore.h"

#include <QSqlError>
#include <QStandardPaths>

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>

namespace tensio {

namespace {

static_assert(std::endian::native == std::endian::little, "the format of the file");
constexpr std::size_t pointsPerBlob = 20;

using Durability = SessionDatabase::Durability;

qint64 stored(Date date)
{
    return std::chrono::duration_cast<std::chrono::microseconds>(date.time_since_epoch()).count();
}

// SQLite has no float; the driver would make text of it.
double stored(float pressure)
{
    return static_cast<double>(pressure);
}

Date dateOf(QVariant const& microseconds)
{
    return Date(std::chrono::duration_cast<Date::duration>(
        std::chrono::microseconds(microseconds.toLongLong())));
}

Durability durabilityOf(MeasurementPart const& part)
{
    return part.isFinished ? Durability::PowerCut : Durability::ProgramEnd;
}

QString const& summaryColumns()
{
    static QString const columns
        = QStringLiteral("SELECT id, start, name, count, best, saved, simulated, target, percent "
                         "FROM session WHERE count > 0 ");
    return columns;
}

SessionSummary summaryOf(QSqlQuery const& row)
{
    return {row.value(0).toLongLong(), dateOf(row.value(1)), row.value(2).toString().toStdString(),
        row.value(3).toInt(), row.value(4).toFloat(), row.value(5).toBool(), row.value(6).toBool()};
}

} // namespace

QtSessionStore::QtSessionStore()
    : QtSessionStore(QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation)
        + QStringLiteral("/sessions.db"))
{
}

QtSessionStore::QtSessionStore(QString const& path)
    : m_database(path)
{
}

std::optional<SessionId> QtSessionStore::begin(SessionHead const& head, MeasurementPart const& part)
{
    SessionId id = 0;
    bool const isDone = m_database.change(durabilityOf(part), [&] {
        auto* const inserted = m_database.run(
            QStringLiteral("INSERT INTO session (start, name, target, percent, simulated) "
                           "VALUES (?, ?, ?, ?, ?)"),
            {stored(head.start), QString::fromStdString(head.name), stored(head.target),
                stored(head.targetPercent), head.isSimulated});
        id = inserted ? inserted->lastInsertId().toLongLong() : 0;
        return id != 0 && writePart(id, part);
    });
    return isDone ? std::optional(id) : std::nullopt;
}

bool QtSessionStore::write(SessionId session, MeasurementPart const& part)
{
    return m_database.change(durabilityOf(part), [&] { return writePart(session, part); });
}

bool QtSessionStore::writePart(SessionId session, MeasurementPart const& part)
{
    auto* const updated = m_database.run(
        QStringLiteral("UPDATE session SET count = max(count, ?), best = max(best, ?) "
                       "WHERE id = ?"),
        {part.number, stored(part.best), session});
    if (!updated)
        return false;
    // Nothing is kept of a session that the user has deleted meanwhile.
    if (updated->numRowsAffected() == 0)
        return true;
    return m_database.run(
               QStringLiteral("INSERT OR REPLACE INTO measurement VALUES (?, ?, ?, ?, ?, ?)"),
               {session, part.number, stored(part.best), stored(part.target),
                   stored(part.timeStamp), part.isFinished})
        && writePoints(session, part);
}

bool QtSessionStore::writePoints(SessionId session, MeasurementPart const& part)
{
    for (std::size_t offset = 0; offset < part.points.size(); offset += pointsPerBlob) {
        auto const blob = std::as_bytes(
            part.points.subspan(offset, std::min(pointsPerBlob, part.points.size() - offset)));
        QByteArray const bytes(
            reinterpret_cast<char const*>(blob.data()), static_cast<qsizetype>(blob.size()));
        if (!m_database.run(QStringLiteral("INSERT OR REPLACE INTO points VALUES (?, ?, ?, ?)"),
                {session, part.number, static_cast<qint64>(part.firstPoint + offset), bytes}))
            return false;
    }
    return true;
}

bool QtSessionStore::end(SessionId session, Date date)
{
    bool const isDone = m_database.change(Durability::ProgramEnd, [&] {
        return m_database.run(
            QStringLiteral("UPDATE session SET ended = ? WHERE id = ?"), {stored(date), session});
    });
    m_database.checkpoint();
    return isDone;
}

bool QtSessionStore::markSaved(SessionId session)
{
    return changeDurably(QStringLiteral("UPDATE session SET saved = 1 WHERE id = ?"), {session});
}

bool QtSessionStore::dismiss(SessionId session)
{
    return changeDurably(QStringLiteral("UPDATE session SET aside = 1 WHERE id = ?"), {session});
}

bool QtSessionStore::remove(std::vector<SessionId> const& sessions)
{
    auto const removeOne = [this](SessionId session) {
        return m_database.run(QStringLiteral("DELETE FROM points WHERE session = ?"), {session})
            && m_database.run(
                QStringLiteral("DELETE FROM measurement WHERE session = ?"), {session})
            && m_database.run(QStringLiteral("DELETE FROM session WHERE id = ?"), {session});
    };
    bool const isDone = m_database.change(
        Durability::PowerCut, [&] { return std::ranges::all_of(sessions, removeOne); });
    // Nothing of the session may stay in the journal.
    m_database.checkpoint();
    return isDone;
}

bool QtSessionStore::removeAll()
{
    bool const isDone = m_database.change(Durability::PowerCut, [this] {
        return m_database.run(QStringLiteral("DELETE FROM points"))
            && m_database.run(QStringLiteral("DELETE FROM measurement"))
            && m_database.run(QStringLiteral("DELETE FROM session"));
    });
    m_database.checkpoint();
    return isDone;
}

SessionPage QtSessionStore::sessions(std::optional<SessionSummary> const& last, std::size_t most)
{
    SessionPage page;
    auto* const rows
        = m_database.run(summaryColumns() + QStringLiteral("AND id < ? ORDER BY id DESC LIMIT ?"),
            {last ? last->id : std::numeric_limits<SessionId>::max(), static_cast<qint64>(most)});
    while (rows && rows->next())
        page.sessions.push_back(summaryOf(*rows));
    page.isComplete = rows && !rows->lastError().isValid();
    return page;
}

std::optional<SessionSummary> QtSessionStore::unsavedSession()
{
    auto* const newest = m_database.run(summaryColumns()
        + QStringLiteral("AND saved = 0 AND aside = 0 "
                         "AND id = (SELECT max(id) FROM session WHERE count > 0)"));
    if (!newest || !newest->next())
        return std::nullopt;
    auto const summary = summaryOf(*newest);
    newest->finish();
    return summary;
}

std::optional<StoredSession> QtSessionStore::load(SessionId session, StoredPoints points)
{
    auto* const row = m_database.run(summaryColumns() + QStringLiteral("AND id = ?"), {session});
    if (!row || !row->next())
        return std::nullopt;
    StoredSession found {summaryOf(*row), {}, row->value(7).toFloat(), row->value(8).toFloat()};
    row->finish();
    auto* const rows = m_database.run(
        QStringLiteral("SELECT number, best, target, time FROM measurement WHERE session = ? "
                       "ORDER BY number"),
        {session});
    while (rows && rows->next()) {
        found.measurements.push_back(StoredMeasurement {rows->value(0).toInt(),
            rows->value(1).toFloat(), rows->value(2).toFloat(), dateOf(rows->value(3)), {}});
    }
    bool const areRead = points == StoredPoints::LeftOut
        || std::ranges::all_of(found.measurements,
            [&](auto& measurement) { return readPoints(session, measurement); });
    return rows && !rows->lastError().isValid() && areRead ? std::optional(std::move(found))
                                                           : std::nullopt;
}

bool QtSessionStore::readPoints(SessionId session, StoredMeasurement& measurement)
{
    auto* const rows = m_database.run(
        QStringLiteral("SELECT kpa FROM points WHERE session = ? AND number = ? ORDER BY first"),
        {session, measurement.number});
    while (rows && rows->next()) {
        auto const bytes = rows->value(0).toByteArray();
        auto const before = measurement.points.size();
        measurement.points.resize(before + static_cast<std::size_t>(bytes.size()) / sizeof(float));
        std::memcpy(measurement.points.data() + before, bytes.constData(),
            (measurement.points.size() - before) * sizeof(float));
    }
    return rows && !rows->lastError().isValid();
}

bool QtSessionStore::changeDurably(QString const& statement, QVariantList const& values)
{
    return m_database.change(
        Durability::PowerCut, [&] { return m_database.run(statement, values) != nullptr; });
}

} // namespace tensio
