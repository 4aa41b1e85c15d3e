#include "platform/qt/QtSessionStore.h"

#include "platform/qt/QtSessionTransfer.h"

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
        = QStringLiteral("SELECT id, start, name, count, best, saved, simulated, target, percent, "
                         "ended FROM session ");
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
    // The caller hears of it, and the next call stores the session.
    if (m_database.reopenIfVanished())
        return std::nullopt;
    SessionId id = 0;
    bool const isDone = m_database.change(durabilityOf(part), [&] {
        auto* const inserted = m_database.run(
            QStringLiteral(
                "INSERT INTO session (start, name, target, percent, simulated, identity) "
                "VALUES (?, ?, ?, ?, ?, lower(hex(randomblob(16))))"),
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

bool QtSessionStore::end(SessionId session, SessionEnd const& end)
{
    return m_database.change(Durability::ProgramEnd, [&] {
        return m_database.run(
            QStringLiteral("UPDATE session SET ended = ?, target = ?, percent = ? WHERE id = ?"),
            {stored(end.date), stored(end.target), stored(end.targetPercent), session});
    });
}

bool QtSessionStore::checkpoint()
{
    // The first write into an empty journal waits for the disk: it is made here.
    return m_database.checkpoint() && m_database.change(Durability::ProgramEnd, [this] {
        return m_database.run(QStringLiteral("UPDATE session SET start = start WHERE id = "
                                             "(SELECT max(id) FROM session)"));
    });
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
    // Nothing of them may stay in the journal.
    return m_database.change(Durability::PowerCut, [&] {
        return std::ranges::all_of(sessions, removeOne);
    }) && m_database.checkpoint();
}

SessionPage QtSessionStore::sessions(std::optional<SessionSummary> const& last, std::size_t most)
{
    constexpr auto end = std::numeric_limits<qint64>::max();
    SessionPage page;
    page.isComplete = m_database.read(summaryColumns()
            + QStringLiteral("WHERE (start, id) < (?, ?) ORDER BY start DESC, id DESC LIMIT ?"),
        {last ? stored(last->start) : end, last ? last->id : end, static_cast<qint64>(most)},
        [&](QSqlQuery const& row) { page.sessions.push_back(summaryOf(row)); });
    return page;
}

std::optional<SessionSummary> QtSessionStore::unsavedSession()
{
    std::optional<SessionSummary> unsaved;
    m_database.read(
        QStringLiteral("%1 WHERE id = (SELECT id FROM session ORDER BY start DESC, id DESC LIMIT 1)"
                       " AND saved = 0 AND aside = 0")
            .arg(summaryColumns()),
        {}, [&](QSqlQuery const& row) { unsaved = summaryOf(row); });
    return unsaved;
}

std::optional<StoredSession> QtSessionStore::load(SessionId session, StoredPoints points)
{
    std::optional<StoredSession> found;
    m_database.read(
        summaryColumns() + QStringLiteral("WHERE id = ?"), {session}, [&](QSqlQuery const& row) {
            found = {summaryOf(row), {}, row.value(7).toFloat(), row.value(8).toFloat(), {}, true};
            if (!row.isNull(9))
                found->end = dateOf(row.value(9));
        });
    // One by one: damage hides only what it has hit.
    for (int number = 1; found && number <= found->summary.count; ++number) {
        auto measurement = readMeasurement(session, number);
        bool const isRead
            = measurement && (points == StoredPoints::LeftOut || readPoints(session, *measurement));
        found->isComplete = found->isComplete && isRead;
        if (measurement)
            found->measurements.push_back(*std::move(measurement));
    }
    return found;
}

std::optional<StoredMeasurement> QtSessionStore::readMeasurement(SessionId session, int number)
{
    std::optional<StoredMeasurement> found;
    m_database.read(
        QStringLiteral(
            "SELECT best, target, time FROM measurement WHERE session = ? AND number = ?"),
        {session, number}, [&](QSqlQuery const& row) {
            found = {
                number, row.value(0).toFloat(), row.value(1).toFloat(), dateOf(row.value(2)), {}};
        });
    return found;
}

bool QtSessionStore::readPoints(SessionId session, StoredMeasurement& measurement)
{
    auto& points = measurement.points;
    bool const areRead = m_database.read(
        QStringLiteral("SELECT kpa FROM points WHERE session = ? AND number = ? ORDER BY first"),
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

bool QtSessionStore::changeDurably(QString const& statement, QVariantList const& values)
{
    return m_database.change(
        Durability::PowerCut, [&] { return m_database.run(statement, values) != nullptr; });
}

} // namespace tensio
