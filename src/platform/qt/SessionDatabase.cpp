#include "platform/qt/SessionDatabase.h"

#include "platform/qt/SessionCopy.h"
#include "platform/qt/SessionFile.h"
#include "platform/qt/SessionTables.h"

#include <QFile>
#include <QFileInfo>
#include <QSqlError>
#include <QUrl>
#include <QUuid>

#include <algorithm>
#include <array>
#include <utility>

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
constexpr auto const* damaged = "damaged";
constexpr auto const* newer = "newer";
constexpr auto const* deleted = "deleted";

int codeOf(QSqlError const& error)
{
    return error.nativeErrorCode().toInt() & 0xff;
}

bool isDamage(int code)
{
    return code == corrupt || code == notADatabase || code == missingTable;
}

bool wipeMoved(QString const& path, std::initializer_list<char const*> reasons)
{
    bool areWiped = true;
    for (auto const* reason : reasons) {
        for (auto const& file : movedSessionFiles(path, reason))
            areWiped = wipeFile(file) && areWiped;
    }
    return areWiped;
}

} // namespace

SessionDatabase::SessionDatabase(QString path)
    : m_path(std::move(path))
    , m_name(QUuid::createUuid().toString())
{
    open();
}

SessionDatabase::~SessionDatabase()
{
    checkpoint();
    if (m_problem == StoreProblem::Damaged)
        moveAway(damaged);
    close();
}

void SessionDatabase::open()
{
    using enum StoreProblem;
    m_isReadOnly = false;
    if (openFile())
        return;
    auto const found = m_problem;
    if (found != DamagedSetAside && found != NewerSetAside)
        return;
    m_problem = NotOpened;
    bool const isReplaced = moveAway(found == NewerSetAside ? newer : damaged) && openFile();
    if (isReplaced || m_problem == DamagedSetAside || m_problem == NewerSetAside)
        m_problem = isReplaced ? found : NotOpened;
}

bool SessionDatabase::openFile()
{
    using enum StoreProblem;
    bool const isSalvaged = salvage();
    m_problem = prepareSessionFile(m_path);
    if (m_problem == None) {
        if (connect(m_path) && runAll(settings) && prepareTables()) {
            m_fileNumber = fileNumber(m_path);
            rememberLastId();
            wipeMoved(m_path, {deleted});
            m_problem = isSalvaged ? DamagedSetAside : None;
            return true;
        }
        m_problem = m_problem == NewerSetAside ? NewerSetAside : openingProblem();
    }
    if (m_problem == NotOpened || m_problem == NotWritable) {
        m_isReadOnly = true;
        auto const url = QUrl::fromLocalFile(m_path).toString(QUrl::FullyEncoded);
        bool const isReadable
            = connect(url + QStringLiteral("?mode=ro&immutable=1")) && prepareTables();
        m_problem = isReadable ? NotWritable : NotOpened;
        if (isReadable)
            return true;
    }
    close();
    return false;
}

bool SessionDatabase::salvage()
{
    auto const files = movedSessionFiles(m_path, damaged);
    bool const isNew = QFileInfo(m_path).size() == 0 && !QFile::exists(journalOf(m_path));
    if (!isNew || files.isEmpty())
        return false;
    // Deleted at the next start if this program ends before it is renamed.
    auto const name = QStringLiteral("%1.%2-part").arg(m_path, QString::fromLatin1(deleted));
    QFile::remove(name);
    constexpr std::array fast {"PRAGMA journal_mode = OFF", "PRAGMA synchronous = OFF"};
    if (prepareSessionFile(name) == StoreProblem::None && connect(name) && runAll(fast)
        && makeTables() && attach(files.last())) {
        SessionCopy copy(*this, QStringLiteral("other"), QStringLiteral("main"));
        while (copy.next()) { }
        bool const isCopied = !copy.hasFailed();
        close();
        if (isCopied && flushFile(name))
            replaceFile(name, m_path);
    }
    // Those that could not be read are lost to the user, too.
    return true;
}

bool SessionDatabase::connect(QString const& name)
{
    close();
    m_errorCode = 0;
    m_durability.reset();
    m_database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_name);
    m_database.setDatabaseName(name);
    m_database.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=0;QSQLITE_OPEN_URI"));
    bool const isConnected = m_database.open();
    if (!isConnected)
        m_errorCode = codeOf(m_database.lastError());
    return isConnected;
}

bool SessionDatabase::prepareTables()
{
    int version = 0;
    if (!read(QStringLiteral("PRAGMA user_version"), {},
            [&](QSqlQuery const& row) { version = row.value(0).toInt(); }))
        return false;
    if (version > sessionTablesVersion)
        m_problem = StoreProblem::NewerSetAside;
    auto const prepare = [&] { return version == 0 ? makeTables() : updateSessionTables(*this); };
    bool const isOld = version < sessionTablesVersion && !m_isReadOnly;
    // An empty file is one that somebody has emptied: there is none after the checkpoint.
    bool const isPrepared = !isOld || (transact(Durability::PowerCut, prepare) && checkpoint());
    return version <= sessionTablesVersion && isPrepared && checkSessionTables(*this);
}

bool SessionDatabase::makeTables()
{
    return makeSessionTables(*this, QStringLiteral("main"))
        && run(QStringLiteral("INSERT INTO sqlite_sequence VALUES ('session', ?)"), {m_lastId});
}

StoreProblem SessionDatabase::openingProblem() const
{
    return isDamage(m_errorCode) ? StoreProblem::DamagedSetAside
        : m_errorCode == busy    ? StoreProblem::InUse
        : m_errorCode == full    ? StoreProblem::NoSpace
                                 : StoreProblem::NotOpened;
}

bool SessionDatabase::moveAway(char const* reason)
{
    close();
    return moveSessionFile(m_path, reason);
}

void SessionDatabase::close()
{
    detach();
    rememberLastId();
    m_queries.clear();
    m_database.close();
    m_database = {};
    if (QSqlDatabase::contains(m_name))
        QSqlDatabase::removeDatabase(m_name);
}

void SessionDatabase::rememberLastId()
{
    auto* const last = run(QStringLiteral("SELECT max(seq) FROM sqlite_sequence"));
    if (last && last->next())
        m_lastId = std::max(m_lastId, last->value(0).toLongLong());
    if (last)
        last->finish();
}

bool SessionDatabase::runAll(std::span<char const* const> statements)
{
    return std::ranges::all_of(statements, [this](char const* statement) {
        return read(QString::fromLatin1(statement), {}, [](QSqlQuery const&) {});
    });
}

QSqlQuery* SessionDatabase::run(QString const& statement, QVariantList const& values)
{
    if (!isOpen())
        return nullptr;
    auto found = m_queries.find(statement);
    if (found == m_queries.end()) {
        QSqlQuery query(m_database);
        query.setForwardOnly(true);
        if (!query.prepare(statement)) {
            m_errorCode = codeOf(query.lastError());
            return nullptr;
        }
        found = m_queries.emplace(statement, std::move(query)).first;
    }
    auto& query = found->second;
    for (int place = 0; place < values.size(); ++place)
        query.bindValue(place, values[place]);
    bool const isDone = query.exec();
    if (!isDone)
        m_errorCode = codeOf(query.lastError());
    return isDone ? &query : nullptr;
}

bool SessionDatabase::isRead(QSqlQuery* rows)
{
    bool const isDone = rows && !rows->lastError().isValid();
    if (rows && !isDone)
        m_errorCode = codeOf(rows->lastError());
    if (rows)
        rows->finish();
    if (!isDone && isDamage(m_errorCode))
        m_problem = StoreProblem::Damaged;
    return isDone;
}

bool SessionDatabase::canChange()
{
    if (!isOpen() || m_problem == StoreProblem::Damaged)
        return false;
    bool const isRefused = m_isReadOnly || m_isAttached;
    if (isRefused)
        m_problem = StoreProblem::NotWritable;
    return !isRefused;
}

bool SessionDatabase::begin(Durability durability)
{
    if (durability != m_durability) {
        if (!run(durability == Durability::PowerCut
                    ? QStringLiteral("PRAGMA synchronous = FULL")
                    : QStringLiteral("PRAGMA synchronous = NORMAL")))
            return false;
        m_durability = durability;
    }
    return run(QStringLiteral("BEGIN"));
}

StoreProblem SessionDatabase::refusal() const
{
    return isDamage(m_errorCode) ? StoreProblem::Damaged
        : m_errorCode == full    ? StoreProblem::NoSpace
                                 : StoreProblem::NotWritable;
}

void SessionDatabase::rollBack()
{
    m_problem = refusal();
    QSqlQuery(m_database).exec(QStringLiteral("ROLLBACK"));
}

bool SessionDatabase::checkpoint()
{
    if (!isOpen() || m_isReadOnly || m_isAttached)
        return false;
    m_errorCode = 0;
    auto* const row = run(QStringLiteral("PRAGMA wal_checkpoint(TRUNCATE)"));
    bool const isDone = row && row->next() && row->value(0).toInt() == 0;
    if (row)
        row->finish();
    if (!isDone && m_problem != StoreProblem::Damaged)
        m_problem = refusal();
    return isDone;
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
    if (!isOpen() || m_isReadOnly || m_isAttached || fileNumber(m_path) == m_fileNumber)
        return false;
    close();
    open();
    if (isOpen())
        m_problem = StoreProblem::Vanished;
    return true;
}

bool SessionDatabase::attach(QString const& name)
{
    m_isAttached = run(QStringLiteral("ATTACH ? AS other"), {name}) != nullptr;
    return m_isAttached;
}

void SessionDatabase::detach()
{
    if (!m_isAttached)
        return;
    m_queries.clear();
    QSqlQuery(m_database).exec(QStringLiteral("ROLLBACK"));
    QSqlQuery(m_database).exec(QStringLiteral("DETACH other"));
    m_isAttached = false;
}

} // namespace tensio
