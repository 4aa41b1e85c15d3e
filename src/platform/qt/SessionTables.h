#pragma once

#include "platform/qt/SessionDatabase.h"

namespace tensio {

// docs/files.md describes them.
constexpr int sessionTablesVersion = 2;

// The first session gets the id after the last one of the database.
bool makeSessionTables(SessionDatabase& database, QLatin1StringView schema);
// Of version 1 to this one.
bool updateSessionTables(SessionDatabase& database);
// Reads the list of sessions and its order, and whether there are the other tables.
bool checkSessionTables(SessionDatabase& database);
// What identifies a session on all computers; a copy of the same old file gives the same.
QString identityColumn(int version);

// Takes number, best, target and time of each measurement of a session: up to damage, then from the
// last one back to it. False when damage hides some.
bool readMeasurements(SessionDatabase& database, QLatin1StringView schema, SessionId session,
    SessionDatabase::Take const& take);

} // namespace tensio
