#pragma once

#include <QString>

namespace tensio {

class SessionDatabase;

// docs/files.md describes them.
constexpr int sessionTablesVersion = 2;

bool makeSessionTables(SessionDatabase& database, QString const& schema);
// Of version 1 to this one.
bool updateSessionTables(SessionDatabase& database);
// Reads the list of sessions and its order, and whether there are the other tables.
bool checkSessionTables(SessionDatabase& database);
// What identifies a session on all computers; a copy of the same old file gives the same.
QString identityColumn(int version);

} // namespace tensio
