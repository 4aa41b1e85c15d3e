#include "platform/qt/SessionDatabase.h"

#include "platform/qt/QtSessionTransfer.h"
#include "platform/qt/SessionFile.h"
#include "platform/qt/SessionTables.h"

#include <QFile>
#include <QFileInfo>
#include <QSqlError>
#include <QUuid>

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace tensio {

namespace {

// SQLite's own result codes; extended ones have more above the lowest byte.
constexpr int missingTable = 1;
constexpr int busy = 5;
constexpr int corrupt = 11;
constexpr int full = 13;
constexpr int notADatabase = 26;

// Locked until this program ends, however it ends: a second one stores nothing. A checkpoint waits
// for the disk: of itself it comes only when the log has grown to 40 MB. fullfsync is for macOS
// alone, as in syncFile.
constexpr std::array settings {"PRAGMA locking_mode = EXCLUSIVE", "PRAGMA journal_mode = WAL",
    "PRAGMA wal_autocheckpoint = 10000", "PRAGMA secure_delete = ON",
    "PRAGMA journal_size_limit = 0", "PRAGMA fullfsync = ON", "BEGIN EXCLUSIVE", "COMMIT"};

// Reasons for which a file is moved away. One that is to be deleted is so at the next start if this
// program ends before.
constexpr auto damaged = "damaged"_L1;
constexpr auto newer = "newer"_L1;
constexpr auto deleted = "deleted"_L1;

int codeOf(QSqlError const& error)
{
    return error.nativeErrorCode().toInt() & 0xff;
}

bool wipeMoved(QString const& path, std::initializer_list<QLatin1StringView> reasons)
{
    bool areWiped = true;
    for (auto const reason : reasons) {
        for (auto const& file : movedSessionFiles(path, reason))
            areWiped = wipeFile(file) && areWiped;
    }
    return areWiped;
}

} // namespace

SessionDatabase::SessionDatabase(QString path)
    : m_path(std::move(path))
    , m_database(QSqlDatabase::addDatabase(u"QSQLITE"_s, QUuid::createUuid().toString()))
{
    m_database.setConnectOptions(u"QSQLITE_BUSY_TIMEOUT=0;QSQLITE_OPEN_URI"_s);
    open();
}

SessionDatabase::~SessionDatabase()
{
    checkpoint();
    if (m_problem == StoreProblem::Damaged)
        moveAway(damaged);
    close();
    auto const name = m_database.connectionName();
    m_database = {};
    QSqlDatabase::removeDatabase(name);
}

void SessionDatabase::open()
{
    using enum StoreProblem;
    m_problem = openFile();
    bool const isNewer = m_problem == NewerSetAside;
    if (m_problem != Damaged && !isNewer)
        return;
    m_problem = moveAway(isNewer ? newer : damaged) ? openFile() : NotOpened;
    if (isOpen())
        m_problem = isNewer ? NewerSetAside : DamagedSetAside;
}

StoreProblem SessionDatabase::openFile()
{
    using enum StoreProblem;
    bool const isSalvaged = salvage();
    m_problem = None;
    auto problem = prepareSessionFile(m_path);
    if (problem == None)
        problem = openForWriting();
    if (problem == NotWritable)
        return openForReading();
    if (problem != None) {
        close();
        return problem;
    }
    m_fileNumber = fileNumber(m_path);
    m_journalNumber = fileNumber(journalOf(m_path));
    rememberLastId();
    wipeMoved(m_path, {deleted});
    return isSalvaged ? DamagedSetAside : None;
}

StoreProblem SessionDatabase::openForWriting()
{
    if (!connect(m_path) || !runAll(settings))
        return refusal();
    auto const version = number(u"PRAGMA user_version"_s);
    if (!version)
        return refusal();
    if (*version > sessionTablesVersion)
        return StoreProblem::NewerSetAside;
    auto const prepare = [&] {
        return *version == 0 ? makeSessionTables(*this, own) : updateSessionTables(*this);
    };
    // An empty file is one that somebody has emptied: there is none after the checkpoint.
    bool const isPrepared = *version == sessionTablesVersion
        || (change(Durability::PowerCut, prepare) && checkpoint());
    return isPrepared && checkSessionTables(*this) ? StoreProblem::None : refusal();
}

StoreProblem SessionDatabase::openForReading()
{
    bool const isReadable = connect(readOnlyUrl(m_path))
        && number(u"PRAGMA user_version"_s).value_or(sessionTablesVersion + 1)
            <= sessionTablesVersion
        && checkSessionTables(*this);
    if (!isReadable)
        close();
    return isReadable ? StoreProblem::NotWritable : StoreProblem::NotOpened;
}

bool SessionDatabase::salvage()
{
    auto files = movedSessionFiles(m_path, damaged);
    // Not their journals.
    files.removeIf([](QString const& file) { return !file.back().isDigit(); });
    bool const isNew = QFileInfo(m_path).size() == 0 && !QFile::exists(journalOf(m_path));
    if (!isNew || files.isEmpty())
        return false;
    // Deleted at the next start if this program ends before it is renamed.
    auto const copy = u"%1.%2-copy"_s.arg(m_path, deleted);
    if (connect(files.last())) {
        QtSessionTransfer transfer(*this, QtSessionTransfer::Kind::Backup, copy);
        while (transfer.step() == TransferState::Running) { }
    }
    close();
    // Those that could not be read are lost to the user, too.
    replaceFile(copy, m_path);
    return true;
}

bool SessionDatabase::connect(QString const& name)
{
    close();
    m_database.setDatabaseName(name);
    bool const isConnected = m_database.open();
    m_errorCode = codeOf(m_database.lastError());
    return isConnected;
}

bool SessionDatabase::moveAway(QLatin1StringView reason)
{
    close();
    return moveSessionFile(m_path, reason);
}

void SessionDatabase::close()
{
    detach();
    rememberLastId();
    m_database.close();
}

void SessionDatabase::rememberLastId()
{
    m_lastId
        = std::max(m_lastId, number(u"SELECT max(seq) FROM sqlite_sequence"_s).value_or(m_lastId));
}

QSqlQuery SessionDatabase::query(QString const& statement, QVariantList const& values)
{
    QSqlQuery query(m_database);
    if (!isOpen())
        return query;
    query.setForwardOnly(true);
    if (query.prepare(statement)) {
        for (auto const& value : values)
            query.addBindValue(value);
        query.exec();
    }
    m_errorCode = codeOf(query.lastError());
    return query;
}

bool SessionDatabase::run(QString const& statement, QVariantList const& values)
{
    return query(statement, values).isActive();
}

bool SessionDatabase::runAll(std::span<char const* const> statements, QLatin1StringView schema)
{
    return std::ranges::all_of(statements, [&](char const* statement) {
        return run(QString::fromLatin1(statement).replace("%1"_L1, schema));
    });
}

bool SessionDatabase::read(QString const& statement, QVariantList const& values, Take const& take)
{
    auto rows = query(statement, values);
    while (rows.next())
        take(rows);
    m_errorCode = codeOf(rows.lastError());
    bool const isDone = rows.isActive() && m_errorCode == 0;
    // It may be the other file that is damaged.
    if (!isDone && !m_isAttached && refusal() == StoreProblem::Damaged)
        reportDamage();
    return isDone;
}

std::optional<qint64> SessionDatabase::number(QString const& statement, QVariantList const& values)
{
    std::optional<qint64> found;
    read(statement, values, [&](QSqlQuery const& row) { found = row.value(0).toLongLong(); });
    return found;
}

bool SessionDatabase::change(Durability durability, std::function<bool()> const& work)
{
    if (!canChange())
        return false;
    bool const isDone = begin(durability) && work() && run(u"COMMIT"_s);
    return isDone || refuse();
}

bool SessionDatabase::refuse()
{
    if (m_problem != StoreProblem::Damaged)
        m_problem = refusal();
    QSqlQuery(m_database).exec(u"ROLLBACK"_s);
    return false;
}

StoreProblem SessionDatabase::refusal() const
{
    switch (m_errorCode) {
    case missingTable:
    case corrupt:
    case notADatabase:
        return StoreProblem::Damaged;
    case busy:
        return StoreProblem::InUse;
    case full:
        return StoreProblem::NoSpace;
    default:
        return StoreProblem::NotWritable;
    }
}

bool SessionDatabase::begin(Durability durability)
{
    return run(durability == Durability::PowerCut ? u"PRAGMA synchronous = FULL"_s
                                                  : u"PRAGMA synchronous = NORMAL"_s)
        && run(u"BEGIN"_s);
}

bool SessionDatabase::isWritable() const
{
    return isOpen() && m_database.databaseName() == m_path && !m_isAttached;
}

bool SessionDatabase::canChange()
{
    if (!isOpen() || m_problem == StoreProblem::Damaged)
        return false;
    if (!isWritable())
        m_problem = StoreProblem::NotWritable;
    return isWritable();
}

bool SessionDatabase::checkpoint()
{
    return isWritable() && (number(u"PRAGMA wal_checkpoint(TRUNCATE)"_s) == 0 || refuse());
}

bool SessionDatabase::removeAll()
{
    if (m_problem != StoreProblem::Damaged && !canChange())
        return false;
    bool isDone = wipeMoved(m_path, {damaged, newer}) && moveAway(deleted);
    isDone = wipeMoved(m_path, {deleted}) && isDone;
    open();
    if (!isDone)
        m_problem = StoreProblem::NotWritable;
    return isDone;
}

bool SessionDatabase::reopenIfVanished()
{
    bool const isEmpty = QFileInfo(m_path).size() == 0;
    if (!isWritable() || (!isEmpty && fileNumber(m_path) == m_fileNumber))
        return false;
    close();
    // SQLite would put what is in it into the file that is there now.
    if (fileNumber(journalOf(m_path)) == m_journalNumber)
        QFile::remove(journalOf(m_path));
    open();
    if (isOpen())
        m_problem = StoreProblem::Vanished;
    return true;
}

bool SessionDatabase::attach(QString const& name)
{
    m_isAttached = run(u"ATTACH ? AS other"_s, {name});
    return m_isAttached;
}

void SessionDatabase::detach()
{
    if (!m_isAttached)
        return;
    run(u"ROLLBACK"_s);
    run(u"DETACH other"_s);
    m_isAttached = false;
}

} // namespace tensio
