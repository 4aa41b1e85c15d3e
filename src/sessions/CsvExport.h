#pragma once

#include "platform/SessionStore.h"

#include <QDir>

#include <functional>

namespace tensio {

class FileWriter;
class SessionArchive;

// Writes a CSV file of all measurements for each session, named by its date and name, into a
// folder, and replaces none that is there. Where it stops, count() is the place of the session that
// failed.
class CsvExport : public SessionTransfer {
public:
    using Written = std::function<void(StoredSession const&)>;

    // Archive and writer must outlive it.
    CsvExport(SessionArchive& archive, FileWriter& fileWriter, QDir const& folder,
        std::vector<SessionSummary> sessions, Written written);

    // One session.
    TransferState step() override;
    double progress() const override;
    int count() const override { return static_cast<int>(m_count); }

private:
    SessionArchive& m_archive;
    FileWriter& m_fileWriter;
    QDir m_folder;
    std::vector<SessionSummary> m_sessions;
    Written m_written;
    std::size_t m_count = 0;
};

} // namespace tensio
