#include "platform/qt/QtSessionTransfer.h"

#include "platform/qt/SessionFile.h"
#include "platform/qt/SessionTables.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryFile>

#include <array>
#include <filesystem>
#include <utility>

using namespace Qt::StringLiterals;

namespace tensio {

namespace {

constexpr std::chrono::milliseconds stepTime {8};
constexpr auto own = SessionDatabase::own;
constexpr auto other = SessionDatabase::other;

TransferState endBy(StoreProblem problem)
{
    return problem == StoreProblem::NoSpace ? TransferState::NoSpace
        : problem == StoreProblem::Damaged  ? TransferState::Unreadable
                                            : TransferState::NotWritable;
}

} // namespace

QtSessionTransfer::QtSessionTransfer(SessionDatabase& database, Kind kind, QString path)
    : m_database(database)
    , m_kind(kind)
    , m_path(std::move(path))
{
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
    if (!m_copy)
        return start();
    if (!m_flushing.valid())
        return copySome();
    bool const isReady = m_flushing.wait_for(stepTime) == std::future_status::ready;
    return isReady ? finish(m_flushing.get()) : TransferState::Running;
}

TransferState QtSessionTransfer::start()
{
    // Opened twice, the store would lose its lock.
    std::error_code error;
    if (std::filesystem::equivalent(
            m_path.toStdU16String(), m_database.path().toStdU16String(), error))
        return TransferState::NotWritable;
    return m_kind == Kind::Backup ? startBackup() : startRestore();
}

// Windows renames no file that is open, and QTemporaryFile stays open.
bool QtSessionTransfer::makeFile()
{
    QTemporaryFile file(m_path + u".XXXXXX"_s);
    file.setAutoRemove(false);
    if (file.open())
        m_newPath = file.fileName();
    return !m_newPath.isEmpty();
}

TransferState QtSessionTransfer::startBackup()
{
    // Each statement for itself: after damage SQLite refuses to commit a transaction. A statement
    // that fails leaves a file that is deleted.
    constexpr std::array settings {"PRAGMA %1.journal_mode = OFF", "PRAGMA %1.synchronous = OFF"};
    if (!makeFile() || !m_database.attach(m_newPath) || !m_database.runAll(settings, other)
        || !makeSessionTables(m_database, other))
        return endBy(m_database.refusal());
    m_copy.emplace(m_database, own, other);
    return TransferState::Running;
}

TransferState QtSessionTransfer::startRestore()
{
    if (!m_database.canChange())
        return TransferState::NotWritable;
    if (!m_database.attach(readOnlyUrl(m_path)))
        return TransferState::Unreadable;
    m_copy.emplace(m_database, other, own);
    if (m_copy->version() > sessionTablesVersion)
        return TransferState::Newer;
    bool const isBegun = m_database.begin(SessionDatabase::Durability::PowerCut);
    return isBegun ? TransferState::Running : endBy(m_database.refusal());
}

TransferState QtSessionTransfer::copySome()
{
    QElapsedTimer timer;
    timer.start();
    bool isMore = true;
    while (isMore && timer.elapsed() < stepTime.count())
        isMore = m_copy->next();
    auto const problem = m_copy->problem();
    if (problem == StoreProblem::Damaged && m_kind == Kind::Backup)
        m_database.reportDamage();
    else if (problem != StoreProblem::None)
        return endBy(problem);
    if (isMore)
        return TransferState::Running;
    if (m_kind == Kind::Backup)
        m_database.detach();
    // A restore is committed after most of it has been flushed.
    m_flushing = std::async(std::launch::async, flushFile,
        m_kind == Kind::Backup ? m_newPath : journalOf(m_database.path()));
    return TransferState::Running;
}

TransferState QtSessionTransfer::finish(bool isFlushed)
{
    if (m_kind == Kind::Restore)
        return m_database.run(u"COMMIT"_s) ? TransferState::Done : endBy(m_database.refusal());
    if (!isFlushed || !replaceFile(m_newPath, m_path))
        return TransferState::NotWritable;
    bool const isWhole = m_copy->problem() == StoreProblem::None;
    return isWhole ? TransferState::Done : TransferState::DoneInPart;
}

} // namespace tensio
