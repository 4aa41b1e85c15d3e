#include "platform/qt/QtSessionTransfer.h"

#include "platform/qt/SessionDatabase.h"
#include "platform/qt/SessionFile.h"
#include "platform/qt/SessionTables.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>
#include <QUrl>

#include <utility>

namespace tensio {

namespace {

constexpr std::chrono::milliseconds stepTime {8};

QString const ownSchema = QStringLiteral("main");
QString const otherSchema = QStringLiteral("other");

} // namespace

QtSessionTransfer::QtSessionTransfer(SessionDatabase& database, Kind kind, QString path)
    : m_database(database)
    , m_kind(kind)
    , m_path(std::move(path))
{
    // Opened twice, it would lose its lock.
    if (QFileInfo(m_path) == QFileInfo(m_database.path()))
        m_state = TransferState::NotWritable;
}

QtSessionTransfer::~QtSessionTransfer()
{
    m_database.detach();
    if (m_flushing.valid())
        m_flushing.wait();
    if (!m_newPath.isEmpty())
        QFile::remove(m_newPath);
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
        return m_kind == Kind::Backup ? startBackup() : startRestore();
    if (!m_flushing.valid())
        return copySome();
    bool const isReady = m_flushing.wait_for(stepTime) == std::future_status::ready;
    return isReady ? finish(m_flushing.get()) : TransferState::Running;
}

// Windows renames no file that is open, and QTemporaryFile stays open.
bool QtSessionTransfer::makeFile()
{
    QTemporaryFile file(m_path + QStringLiteral(".XXXXXX"));
    file.setAutoRemove(false);
    if (file.open())
        m_newPath = file.fileName();
    return !m_newPath.isEmpty();
}

TransferState QtSessionTransfer::startBackup()
{
    auto const set = [this](QString const& setting) {
        return m_database.read(QStringLiteral("PRAGMA other.") + setting, {}, [](auto const&) {});
    };
    // Each statement for itself: after damage SQLite refuses to commit a transaction. A statement
    // that fails leaves a file that is deleted.
    bool const isReady = makeFile() && m_database.attach(m_newPath)
        && set(QStringLiteral("journal_mode = OFF")) && set(QStringLiteral("synchronous = OFF"))
        && makeSessionTables(m_database, otherSchema);
    return isReady ? startCopy(ownSchema, otherSchema) : refusal();
}

TransferState QtSessionTransfer::startRestore()
{
    if (!m_database.canChange())
        return TransferState::NotWritable;
    // Immutable: nothing is written beside it, and it may lie on a medium that cannot be written.
    auto const url = QUrl::fromLocalFile(m_path).toString(QUrl::FullyEncoded);
    if (!m_database.attach(url + QStringLiteral("?mode=ro&immutable=1")))
        return TransferState::Unreadable;
    bool const isBegun = m_database.begin(SessionDatabase::Durability::PowerCut);
    return isBegun ? startCopy(otherSchema, ownSchema) : refusal();
}

TransferState QtSessionTransfer::startCopy(QString const& from, QString const& to)
{
    m_copy.emplace(m_database, from, to);
    if (m_copy->version() > sessionTablesVersion)
        return TransferState::Newer;
    if (m_copy->isPossible())
        return TransferState::Running;
    return m_copy->hasFailed() ? refusal() : TransferState::Unreadable;
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
    if (m_copy->hasMetDamage() && m_kind == Kind::Restore)
        return TransferState::Unreadable;
    if (m_copy->hasMetDamage())
        m_database.reportDamage();
    if (!isMore)
        flush();
    return TransferState::Running;
}

void QtSessionTransfer::flush()
{
    // A restore is committed after most of it has been flushed.
    if (m_kind == Kind::Backup)
        m_database.detach();
    m_flushing = std::async(std::launch::async, flushFile,
        m_kind == Kind::Backup ? m_newPath : journalOf(m_database.path()));
}

TransferState QtSessionTransfer::finish(bool isFlushed)
{
    if (m_kind == Kind::Restore)
        return m_database.run(QStringLiteral("COMMIT")) ? TransferState::Done : refusal();
    bool const isDone = isFlushed && replaceFile(m_newPath, m_path);
    if (!isDone)
        return TransferState::NotWritable;
    return m_copy->hasMetDamage() ? TransferState::DoneInPart : TransferState::Done;
}

TransferState QtSessionTransfer::refusal() const
{
    return m_database.refusal() == StoreProblem::NoSpace ? TransferState::NoSpace
                                                         : TransferState::NotWritable;
}

} // namespace tensio
