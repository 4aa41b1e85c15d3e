#pragma once

#include "platform/SessionStore.h"

#include <QString>
#include <QStringList>

namespace tensio {

// What the file system does for the file of the sessions while it is not open.

// Makes it and its folder if they are missing, for the user alone. None, NoSpace or NotWritable.
StoreProblem prepareSessionFile(QString const& path);

// Appends the reason and the time to the names of the file and its journal, or of neither.
bool moveSessionFile(QString const& path, QLatin1StringView reason);

// Those that were moved, with their journals; the latest last.
QStringList movedSessionFiles(QString const& path, QLatin1StringView reason);

QString journalOf(QString const& path);

// For SQLite: nothing is written beside the file, which may lie where nothing can be written.
QString readOnlyUrl(QString const& path);

// Overwrites the file before deleting it.
bool wipeFile(QString const& path);

bool flushFile(QString const& path);
// In one step.
bool replaceFile(QString const& from, QString const& to);

// 0 when there is no file; another one once it was replaced, but not on Windows.
quint64 fileNumber(QString const& path);

} // namespace tensio
