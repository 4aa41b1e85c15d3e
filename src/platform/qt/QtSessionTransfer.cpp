#include "platform/qt/QtSessionTransfer.h"

#include "platform/qt/SessionDatabase.h"
#include "platform/qt/SessionFile.h"
#include "platform/qt/SessionTables.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QUrl>

#include <chrono>
#include <utility>

namespace tensio {

namespace {

constexpr std::chrono::milliseconds stepTime {10};

QString const other = QStringLiteral("other");

} // namespace

QtSessionTransfer::QtSessionTransfer(SessionDatabase& database, QString path)
    : m_database(database)
    , m_path(std::move(path))
{
    // Closing it would release the lock of the database.
    if (QFileInfo(m_path) == QFileInfo(m_database.path()))
        m_state = TransferState::NotWritable;
}

QtSessionTransfer::~QtSessionTransfer()
{
    m_database.detach();
}

TransferState QtSessionTransfer::step()
{
    if (m_state == TransferState::Running)
        m_state = advance();
    if (m_state != TransferState::Running)
        m_database.detach();
    return m_state;
}

TransferState QtSessionTransfer::advance()
{
    if (!m_copy)
        return start();
    if (!m_flushing.valid())
        return copySome();
    bool const isReady = m_flushing.wait_for(stepTime) == std::future_status::ready;
    return isReady ? finish(m_flushing.get()) : TransferState::Running;
}

TransferState QtSessionTransfer::copySome()
{
    QElapsedTimer timer;
    timer.start();
    bool isMore = true;
    while (isMore && timer.elapsed() < stepTime.count())
        isMore = m_copy->next();
    if (m_copy->hasFailed())
        return refusal();
    auto const state = m_copy->hasMetDamage() ? meetDamage() : TransferState::Running;
    if (isMore || state != TransferState::Running)
        return state;
    m_flushing = std::async(std::launch::async, flushFile, written());
    return TransferState::Running;
}

TransferState QtSessionTransfer::beginCopy(QString const& from, QString const& to)
{
    m_copy.emplace(m_database, from, to);
    return m_copy->version() > sessionTablesVersion ? TransferState::Newer
        : m_copy->isPossible()                      ? TransferState::Running
                                                    : TransferState::NotABackup;
}

TransferState QtSessionTransfer::refusal() const
{
    return m_database.refusal() == StoreProblem::NoSpace ? TransferState::NoSpace
                                                         : TransferState::NotWritable;
}

QtSessionBackup::QtSessionBackup(SessionDatabase& database, QString const& path)
    : QtSessionTransfer(database, path)
    , m_file(path + QStringLiteral(".XXXXXX"))
{
}

TransferState QtSessionBackup::start()
{
    auto const ignore = [](QSqlQuery const&) {};
    // Each statement for itself: after damage SQLite refuses to commit a transaction. A statement
    // that fails leaves a file that is deleted.
    bool const isReady = m_file.open() && database().attach(m_file.fileName())
        && database().read(QStringLiteral("PRAGMA other.journal_mode = OFF"), {}, ignore)
        && database().read(QStringLiteral("PRAGMA other.synchronous = OFF"), {}, ignore)
        && makeSessionTables(database(), other);
    return isReady ? beginCopy(QStringLiteral("main"), other) : refusal();
}

TransferState QtSessionBackup::meetDamage()
{
    database().reportDamage();
    return TransferState::Running;
}

QString QtSessionBackup::written()
{
    database().detach();
    return m_file.fileName();
}

TransferState QtSessionBackup::finish(bool isFlushed)
{
    if (!isFlushed || !replaceFile(m_file.fileName(), path()))
        return TransferState::NotWritable;
    m_file.setAutoRemove(false);
    return TransferState::Done;
}

TransferState QtSessionRestore::start()
{
    // Immutable: nothing is written beside it, and it may lie on a medium that cannot be written.
    auto const url = QUrl::fromLocalFile(path()).toString(QUrl::FullyEncoded);
    if (!database().attach(url + QStringLiteral("?mode=ro&immutable=1")))
        return TransferState::NotABackup;
    bool const isBegun = database().begin(SessionDatabase::Durability::PowerCut);
    return isBegun ? beginCopy(other, QStringLiteral("main")) : refusal();
}

TransferState QtSessionRestore::meetDamage()
{
    return TransferState::NotABackup;
}

QString QtSessionRestore::written()
{
    return journalOf(database().path());
}

TransferState QtSessionRestore::finish(bool)
{
    // What is left to be flushed is little.
    return database().run(QStringLiteral("COMMIT")) ? TransferState::Done : refusal();
}

} // namespace tensio
