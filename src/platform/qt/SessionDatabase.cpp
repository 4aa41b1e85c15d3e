#include "platform/qt/SessionDatabase.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlError>
#include <QUuid>

namespace tensio {

namespace {

constexpr int schemaVersion = 1;
// SQLite's own result codes; extended ones have more above the lowest byte.
constexpr int noSuchTable = 1;
constexpr int busy = 5;
constexpr int corrupt = 11;
constexpr int full = 13;
constexpr int notADatabase = 26;

QStringList const& tables()
{
    static QStringList const statements {
        QStringLiteral("CREATE TABLE session (id INTEGER PRIMARY KEY AUTOINCREMENT, start INTEGER, "
                       "ended INTEGER, name TEXT, target REAL, percent REAL, simulated INTEGER, "
                       "saved INTEGER DEFAULT 0, aside INTEGER DEFAULT 0, count INTEGER DEFAULT 0, "
                       "best REAL DEFAULT 0)"),
        QStringLiteral("CREATE TABLE measurement (session INTEGER, number INTEGER, best REAL, "
                       "target REAL, time INTEGER, finished INTEGER, "
                       "PRIMARY KEY (session, number)) WITHOUT ROWID"),
        QStringLiteral("CREATE TABLE points (session INTEGER, number INTEGER, first INTEGER, "
                       "kpa BLOB, PRIMARY KEY (session, number, first)) WITHOUT ROWID"),
        QStringLiteral("PRAGMA user_version = %1").arg(schemaVersion)};
    return statements;
}

int codeOf(QSqlError const& error)
{
    return error.nativeErrorCode().toInt() & 0xff;
}

bool isDamage(int code)
{
    return code == corrupt || code == notADatabase;
}

// The folder and the file are the user's alone.
bool prepareFile(QString const& path)
{
    auto const folder = QFileInfo(path).path();
    if (!QDir().mkpath(folder))
        return false;
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    QFile file(path);
    return file.open(QIODevice::ReadWrite)
        && file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
}

} // namespace

SessionDatabase::SessionDatabase(QString const& path)
    : m_path(path)
    , m_name(QUuid::createUuid().toString())
{
    QFileInfo const file(path);
    QString const damaged = file.fileName() + QStringLiteral(".damaged-*");
    // Renamed when the latest run ended, which could not say so any more.
    if (!file.exists() && !file.dir().entryList({damaged}).isEmpty())
        m_problem = StoreProblem::DamagedSetAside;
    auto finding = open();
    bool const isDamaged = finding == Finding::Damaged;
    if (isDamaged || finding == Finding::Newer) {
        m_problem = isDamaged ? StoreProblem::DamagedSetAside : StoreProblem::NewerSetAside;
        auto const reason = isDamaged ? QStringLiteral("damaged") : QStringLiteral("newer");
        finding = moveAway(reason) ? open() : Finding::Refused;
    }
    if (finding == Finding::Fine)
        return;
    m_problem = finding == Finding::Busy ? StoreProblem::InUse : StoreProblem::NotOpened;
    close();
}

SessionDatabase::~SessionDatabase()
{
    checkpoint();
    if (m_problem == StoreProblem::Damaged)
        moveAway(QStringLiteral("damaged"));
    close();
}

SessionDatabase::Finding SessionDatabase::open()
{
    auto const findingOf = [](QSqlError const& error) {
        int const code = codeOf(error);
        return isDamage(code) ? Finding::Damaged : code == busy ? Finding::Busy : Finding::Refused;
    };
    if (!prepareFile(m_path))
        return Finding::Refused;
    m_database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_name);
    m_database.setDatabaseName(m_path);
    m_database.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=0"));
    if (!m_database.open())
        return findingOf(m_database.lastError());
    // Locked until this program ends, however it ends: a second one stores nothing.
    for (auto const* statement : {"PRAGMA locking_mode = EXCLUSIVE", "PRAGMA journal_mode = WAL",
             "PRAGMA secure_delete = ON", "PRAGMA journal_size_limit = 0", "BEGIN EXCLUSIVE",
             "COMMIT"}) {
        QSqlQuery query(m_database);
        if (!query.exec(QString::fromLatin1(statement)))
            return findingOf(query.lastError());
    }
    QSqlQuery version(m_database);
    if (!version.exec(QStringLiteral("PRAGMA user_version")) || !version.next())
        return findingOf(version.lastError());
    if (version.value(0).toInt() > schemaVersion)
        return Finding::Newer;
    bool const isNew = version.value(0).toInt() == 0;
    version.finish();
    if (isNew && !makeTables())
        return Finding::Refused;
    for (auto const* table : {"session", "measurement", "points"}) {
        QSqlQuery query(m_database);
        if (!query.exec(QStringLiteral("SELECT * FROM %1 LIMIT 1").arg(QString::fromLatin1(table))))
            return codeOf(query.lastError()) == noSuchTable ? Finding::Damaged
                                                            : findingOf(query.lastError());
    }
    return Finding::Fine;
}

bool SessionDatabase::makeTables()
{
    return change(Durability::PowerCut, [this] {
        for (auto const& statement : tables()) {
            if (!QSqlQuery(m_database).exec(statement))
                return false;
        }
        return true;
    });
}

bool SessionDatabase::moveAway(QString const& reason)
{
    close();
    auto const now = QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss"));
    auto const name = QStringLiteral("%1.%2-%3").arg(m_path, reason, now);
    // The journal belongs to the file: both are renamed or none.
    QString const journal = m_path + QStringLiteral("-wal");
    QString const journalAside = name + QStringLiteral("-wal");
    if (QFile::exists(journal) && !QFile::rename(journal, journalAside))
        return false;
    if (QFile::rename(m_path, name))
        return true;
    QFile::rename(journalAside, journal);
    return false;
}

void SessionDatabase::close()
{
    m_queries.clear();
    m_database.close();
    m_database = {};
    if (QSqlDatabase::contains(m_name))
        QSqlDatabase::removeDatabase(m_name);
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

void SessionDatabase::rollBack()
{
    m_problem = isDamage(m_errorCode) ? StoreProblem::Damaged
        : m_errorCode == full         ? StoreProblem::NoSpace
                                      : StoreProblem::NotWritable;
    run(QStringLiteral("ROLLBACK"));
}

void SessionDatabase::checkpoint()
{
    if (isOpen())
        QSqlQuery(m_database).exec(QStringLiteral("PRAGMA wal_checkpoint(TRUNCATE)"));
}

} // namespace tensio
