#pragma once

#include "platform/qt/SessionCopy.h"

#include <QTemporaryFile>

#include <future>

namespace tensio {

// Copies between the database and an attached file, then waits for the disk in another thread.
class QtSessionTransfer : public SessionTransfer {
public:
    // The database must outlive the transfer.
    QtSessionTransfer(SessionDatabase& database, QString path);
    ~QtSessionTransfer() override;

    TransferState step() override;
    double progress() const override { return m_copy ? m_copy->progress() : 0.0; }
    int count() const override { return m_copy ? m_copy->count() : 0; }

protected:
    SessionDatabase& database() const { return m_database; }
    QString const& path() const { return m_path; }
    TransferState beginCopy(QString const& from, QString const& to);
    // NoSpace or NotWritable, by the latest statement that failed.
    TransferState refusal() const;

private:
    virtual TransferState start() = 0;
    // Whether to go on although a part of the source cannot be read.
    virtual TransferState meetDamage() = 0;
    // The file that is to be flushed before the end.
    virtual QString written() = 0;
    virtual TransferState finish(bool isFlushed) = 0;

    TransferState advance();
    TransferState copySome();

    SessionDatabase& m_database;
    QString m_path;
    TransferState m_state = TransferState::Running;
    std::optional<SessionCopy> m_copy;
    std::future<bool> m_flushing;
};

class QtSessionBackup : public QtSessionTransfer {
public:
    QtSessionBackup(SessionDatabase& database, QString const& path);

private:
    TransferState start() override;
    TransferState meetDamage() override;
    QString written() override;
    TransferState finish(bool isFlushed) override;

    QTemporaryFile m_file;
};

class QtSessionRestore : public QtSessionTransfer {
public:
    using QtSessionTransfer::QtSessionTransfer;

private:
    TransferState start() override;
    TransferState meetDamage() override;
    QString written() override;
    TransferState finish(bool isFlushed) override;
};

} // namespace tensio
