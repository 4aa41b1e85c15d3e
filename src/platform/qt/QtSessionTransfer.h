#pragma once

#include "platform/qt/SessionCopy.h"

#include <future>

namespace tensio {

// Copies between the database and an attached file, then waits for the disk in another thread.
class QtSessionTransfer : public SessionTransfer {
    Q_DISABLE_COPY_MOVE(QtSessionTransfer)

public:
    enum class Kind { Backup, Restore };

    QtSessionTransfer(SessionDatabase& database, Kind kind, QString path);
    ~QtSessionTransfer() override;

    TransferState step() override;
    double progress() const override { return m_copy ? m_copy->progress() : 0.0; }
    int count() const override { return m_copy ? m_copy->count() : 0; }

private:
    TransferState start();
    bool makeFile();
    TransferState startBackup();
    TransferState startRestore();
    TransferState copySome();
    TransferState finish(bool isFlushed);

    SessionDatabase& m_database;
    Kind m_kind;
    QString m_path;
    // Becomes the backup; empty before it is there.
    QString m_newPath;
    std::optional<SessionCopy> m_copy;
    std::future<bool> m_flushing;
};

} // namespace tensio
