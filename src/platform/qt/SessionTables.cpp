#include "platform/qt/SessionTables.h"

#include <array>

using namespace Qt::StringLiterals;

namespace tensio {

namespace {

// The schema stands for %1.
constexpr std::array tables {
    "CREATE TABLE %1.session (id INTEGER PRIMARY KEY AUTOINCREMENT, start INTEGER, ended INTEGER, "
    "name TEXT, target REAL, percent REAL, simulated INTEGER, saved INTEGER DEFAULT 0, "
    "aside INTEGER DEFAULT 0, count INTEGER DEFAULT 0, best REAL DEFAULT 0, identity TEXT)",
    "CREATE TABLE %1.measurement (session INTEGER, number INTEGER, best REAL, target REAL, "
    "time INTEGER, finished INTEGER, PRIMARY KEY (session, number)) WITHOUT ROWID",
    "CREATE TABLE %1.points (session INTEGER, number INTEGER, first INTEGER, kpa BLOB, "
    "PRIMARY KEY (session, number, first)) WITHOUT ROWID"};

constexpr std::array newInVersion2 {"CREATE INDEX %1.starts ON session (start)",
    "CREATE UNIQUE INDEX %1.identities ON session (identity)", "PRAGMA %1.user_version = 2"};

constexpr std::array checks {"SELECT max(length(name)) FROM session NOT INDEXED",
    "SELECT count(*) FROM session WHERE start >= 0", "SELECT * FROM measurement LIMIT 1",
    "SELECT * FROM points LIMIT 1"};

} // namespace

bool makeSessionTables(SessionDatabase& database, QLatin1StringView schema)
{
    return database.runAll(tables, schema) && database.runAll(newInVersion2, schema)
        && database.run(u"INSERT INTO %1.sqlite_sequence VALUES ('session', ?)"_s.arg(schema),
            {database.lastId()});
}

bool updateSessionTables(SessionDatabase& database)
{
    return database.run(u"ALTER TABLE session ADD COLUMN identity TEXT"_s)
        && database.run(u"DELETE FROM session WHERE count = 0"_s)
        && database.run(u"UPDATE session SET identity = %1"_s.arg(identityColumn(1)))
        && database.runAll(newInVersion2);
}

bool checkSessionTables(SessionDatabase& database)
{
    return database.runAll(checks);
}

QString identityColumn(int version)
{
    return version == 1 ? u"start || '-' || id"_s : u"identity"_s;
}

bool readMeasurements(SessionDatabase& database, QLatin1StringView schema, SessionId session,
    SessionDatabase::Take const& take)
{
    auto const rows = u"SELECT number, best, target, time FROM %1.measurement WHERE session = ? "
                      "AND number > ? ORDER BY number"_s.arg(schema);
    int last = 0;
    auto const takeNext = [&](QSqlQuery const& row) {
        last = row.value(0).toInt();
        take(row);
    };
    if (database.read(rows, {session, last}, takeNext))
        return true;
    database.read(rows + u" DESC"_s, {session, last}, take);
    return false;
}

} // namespace tensio
