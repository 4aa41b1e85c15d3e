#include "platform/qt/QtSessionStore.h"

#include "platform/qt/QtSessionTransfer.h"
#include "platform/qt/SessionTables.h"

#include <QStandardPaths>

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <limits>

using namespace Qt::StringLiterals;

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

QString summariesWhere(QString const& condition)
{
    return u"SELECT id, start, name, count, best, saved, simulated, target, percent, ended "
           "FROM session WHERE "_s
        + condition;
}

SessionSummary summaryOf(QSqlQuery const& row)
{
    return {row.value(0).toLongLong(), dateOf(row.value(1)), row.value(2).toString().toStdString(),
        row.value(3).toInt(), row.value(4).toFloat(), row.value(5).toBool(), row.value(6).toBool()};
}

} // namespace

QtSessionStore::QtSessionStore()
    : QtSessionStore(
        QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation) + u"/sessions.db"_s)
{
}

std::optional<SessionId> QtSessionStore::begin(SessionHead const& head, MeasurementPart const& part)
{
    // The caller hears of it, and the next call stores the session.
    if (m_database.reopenIfVanished())
        return std::nullopt;
    SessionId id = 0;
    bool const isDone = m_database.change(durabilityOf(part), [&] {
        auto const inserted = m_database.query(
            u"INSERT INTO session (start, name, target, percent, simulated, identity) "
            "VALUES (?, ?, ?, ?, ?, lower(hex(randomblob(16))))"_s,
            {stored(head.start), QString::fromStdString(head.name), stored(head.target),
                stored(head.targetPercent), head.isSimulated});
        id = inserted.lastInsertId().toLongLong();
        return inserted.isActive() && writePart(id, part);
    });
    return isDone ? std::optional(id) : std::nullopt;
}

bool QtSessionStore::write(SessionId session, MeasurementPart const& part)
{
    return m_database.change(durabilityOf(part), [&] { return writePart(session, part); });
}

bool QtSessionStore::writePart(SessionId session, MeasurementPart const& part)
{
    auto const updated = m_database.query(
        u"UPDATE session SET count = max(count, ?), best = max(best, ?) WHERE id = ?"_s,
        {part.number, stored(part.best), session});
    // Nothing is kept of a session that the user has deleted meanwhile.
    if (updated.numRowsAffected() < 1)
        return updated.isActive();
    return m_database.run(u"INSERT OR REPLACE INTO measurement VALUES (?, ?, ?, ?, ?, ?)"_s,
               {session, part.number, stored(part.best), stored(part.target),
                   stored(part.timeStamp), part.isFinished})
        && writePoints(session, part);
}

bool QtSessionStore::writePoints(SessionId session, MeasurementPart const& part)
{
    for (std::size_t first = 0; first < part.points.size(); first += pointsPerBlob) {
        auto const points
            = part.points.subspan(first, std::min(pointsPerBlob, part.points.size() - first));
        QByteArray const bytes(reinterpret_cast<char const*>(points.data()),
            static_cast<qsizetype>(points.size_bytes()));
        if (!m_database.run(u"INSERT OR REPLACE INTO points VALUES (?, ?, ?, ?)"_s,
                {session, part.number, static_cast<qint64>(part.firstPoint + first), bytes}))
            return false;
    }
    return true;
}

bool QtSessionStore::end(SessionId session, SessionEnd const& end)
{
    return change(Durability::ProgramEnd,
        u"UPDATE session SET ended = ?, target = ?, percent = ? WHERE id = ?"_s,
        {stored(end.date), stored(end.target), stored(end.targetPercent), session});
}

bool QtSessionStore::checkpoint()
{
    // The first write into an empty journal waits for the disk: it is made here.
    return m_database.checkpoint()
        && change(Durability::ProgramEnd,
            u"UPDATE session SET start = start WHERE id = (SELECT max(id) FROM session)"_s, {});
}

bool QtSessionStore::markSaved(SessionId session)
{
    return change(Durability::PowerCut, u"UPDATE session SET saved = 1 WHERE id = ?"_s, {session});
}

bool QtSessionStore::dismiss(SessionId session)
{
    return change(Durability::PowerCut, u"UPDATE session SET aside = 1 WHERE id = ?"_s, {session});
}

bool QtSessionStore::remove(std::vector<SessionId> const& sessions)
{
    QStringList ids;
    for (auto const session : sessions)
        ids += QString::number(session);
    auto const remove = [&] {
        return std::ranges::all_of(std::array {u"points WHERE session"_s,
                                       u"measurement WHERE session"_s, u"session WHERE id"_s},
            [&](QString const& rows) {
                return m_database.run(u"DELETE FROM %1 IN (%2)"_s.arg(rows, ids.join(u',')));
            });
    };
    // Nothing of them may stay in the journal.
    return m_database.change(Durability::PowerCut, remove) && m_database.checkpoint();
}

SessionPage QtSessionStore::sessions(std::optional<SessionSummary> const& last, std::size_t most)
{
    constexpr auto end = std::numeric_limits<qint64>::max();
    SessionPage page;
    page.isComplete = m_database.read(
        summariesWhere(u"(start, id) < (?, ?) ORDER BY start DESC, id DESC LIMIT ?"_s),
        {last ? stored(last->start) : end, last ? last->id : end, static_cast<qint64>(most)},
        [&](QSqlQuery const& row) { page.sessions.push_back(summaryOf(row)); });
    return page;
}

std::optional<SessionSummary> QtSessionStore::unsavedSession()
{
    std::optional<SessionSummary> unsaved;
    m_database.read(
        summariesWhere(u"id = (SELECT id FROM session ORDER BY start DESC, id DESC LIMIT 1) "
                       "AND saved = 0 AND aside = 0"_s),
        {}, [&](QSqlQuery const& row) { unsaved = summaryOf(row); });
    return unsaved;
}

std::optional<StoredSession> QtSessionStore::load(SessionId session, StoredPoints points)
{
    std::optional<StoredSession> found;
    m_database.read(summariesWhere(u"id = ?"_s), {session}, [&](QSqlQuery const& row) {
        found = {summaryOf(row), {}, row.value(7).toFloat(), row.value(8).toFloat(), {}, true};
        if (!row.isNull(9))
            found->end = dateOf(row.value(9));
    });
    if (!found)
        return found;
    auto& measurements = found->measurements;
    readMeasurements(m_database, SessionDatabase::own, session, [&](QSqlQuery const& row) {
        measurements.push_back({row.value(0).toInt(), row.value(1).toFloat(),
            row.value(2).toFloat(), dateOf(row.value(3)), {}});
    });
    std::ranges::sort(measurements, {}, &StoredMeasurement::number);
    found->isComplete = std::ssize(measurements) >= found->summary.count;
    // One by one: damage hides only what it has hit.
    for (auto& each : measurements) {
        if (points == StoredPoints::Loaded && !readPoints(session, each))
            found->isComplete = false;
    }
    return found;
}

bool QtSessionStore::readPoints(SessionId session, StoredMeasurement& measurement)
{
    auto& points = measurement.points;
    bool const areRead = m_database.read(
        u"SELECT kpa FROM points WHERE session = ? AND number = ? ORDER BY first"_s,
        {session, measurement.number}, [&](QSqlQuery const& row) {
            auto const bytes = row.value(0).toByteArray();
            auto const before = points.size();
            points.resize(before + static_cast<std::size_t>(bytes.size()) / sizeof(float));
            std::memcpy(points.data() + before, bytes.constData(),
                (points.size() - before) * sizeof(float));
        });
    return areRead && !points.empty();
}

std::unique_ptr<SessionTransfer> QtSessionStore::backUp(std::string const& path)
{
    return std::make_unique<QtSessionTransfer>(
        m_database, QtSessionTransfer::Kind::Backup, QString::fromStdString(path));
}

std::unique_ptr<SessionTransfer> QtSessionStore::restore(std::string const& path)
{
    return std::make_unique<QtSessionTransfer>(
        m_database, QtSessionTransfer::Kind::Restore, QString::fromStdString(path));
}

bool QtSessionStore::change(
    Durability durability, QString const& statement, QVariantList const& values)
{
    return m_database.change(durability, [&] { return m_database.run(statement, values); });
}

} // namespace tensio
