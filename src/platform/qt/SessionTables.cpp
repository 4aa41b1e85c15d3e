#include "platform/qt/SessionTables.h"

#include "platform/qt/SessionDatabase.h"

#include <algorithm>
#include <array>

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

template<typename Statements>
bool runAll(SessionDatabase& database, Statements const& statements, QString const& schema)
{
    return std::ranges::all_of(statements, [&](char const* statement) {
        return database.run(QString::fromLatin1(statement).arg(schema)) != nullptr;
    });
}

} // namespace

bool makeSessionTables(SessionDatabase& database, QString const& schema)
{
    return runAll(database, tables, schema) && runAll(database, newInVersion2, schema);
}

bool updateSessionTables(SessionDatabase& database)
{
    return database.run(QStringLiteral("ALTER TABLE session ADD COLUMN identity TEXT"))
        && database.run(QStringLiteral("DELETE FROM session WHERE count = 0"))
        && database.run(QStringLiteral("UPDATE session SET identity = %1").arg(identityColumn(1)))
        && runAll(database, newInVersion2, QStringLiteral("main"));
}

bool checkSessionTables(SessionDatabase& database)
{
    constexpr std::array statements {"SELECT max(length(name)) FROM session NOT INDEXED",
        "SELECT count(*) FROM session WHERE start >= 0", "SELECT * FROM measurement LIMIT 1",
        "SELECT * FROM points LIMIT 1"};
    return std::ranges::all_of(statements, [&](char const* statement) {
        return database.read(QString::fromLatin1(statement), {}, [](QSqlQuery const&) {});
    });
}

QString identityColumn(int version)
{
    return version == 1 ? QStringLiteral("start || '-' || id") : QStringLiteral("identity");
}

} // namespace tensio
