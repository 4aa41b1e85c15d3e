#pragma once

#include "platform/SessionStore.h"

#include <functional>

class QWidget;

namespace tensio {

class FileWriter;
class SessionArchive;

// Writes a CSV file of all measurements for each session, at least one, named by its date and name,
// into a folder that the user chooses, and replaces none that is there. Returns at once, calls back
// after each file, and tells the end above the window, which archive and writer must outlive.
void exportCsv(std::vector<SessionSummary> const& sessions, SessionArchive& archive,
    FileWriter& fileWriter, QWidget& window, std::function<void(SessionId)> const& saved);

} // namespace tensio
