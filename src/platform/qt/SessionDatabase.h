#pragma once

#include "platform/SessionStore.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariant>

#include <map>
#include <span>

namespace tensio {

// The SQLite file of the sessions, with the tables of this version, locked for this program alone.
// A file that is damaged or was written by a newer version is moved away, and a new one is made;
// into it goes what can still be read of the damaged one. If damage shows only later, the file
// stays readable, refuses changes, and is moved away at the end. A file that cannot be written is
// opened for reading.
class SessionDatabase {
public:
    // What a change survives.
    enum class Durability { ProgramEnd, PowerCut };

    explicit SessionDatabase(QString path);
    SessionDatabase(SessionDatabase const&) = delete;
    SessionDatabase& operator=(SessionDatabase const&) = delete;
    ~SessionDatabase();

    bool isOpen() const { return m_database.isOpen(); }
    StoreProblem problem() const { return m_problem; }
    QString const& path() const { return m_path; }

    // The values replace the question marks. Null when the statement failed. The query is owned by
    // the database and valid until the same statement runs again.
    QSqlQuery* run(QString const& statement, QVariantList const& values = {});
    // False when a row could not be read.
    template<typename Take>
    bool read(QString const& statement, QVariantList const& values, Take const& take)
    {
        auto* const rows = run(statement, values);
        while (rows && rows->next())
            take(*rows);
        return isRead(rows);
    }
    // Makes all the changes of the work, or none when it returns false or null.
    template<typename Work>
    bool change(Durability durability, Work const& work)
    {
        return canChange() && transact(durability, work);
    }
    // Moves what was written from the journal into the file.
    bool checkpoint();
    // Also the files that were moved away.
    bool removeAll();
    // True when the file that was opened is gone; the one that is there now, or a new one, is open.
    bool reopenIfVanished();

    // False, with the reason in problem(), where nothing may be changed now.
    bool canChange();
    // Another file, the schema "other" in statements. Until it is detached, change() refuses.
    bool attach(QString const& name);
    // Undoes what has not been committed.
    void detach();
    bool begin(Durability durability);
    // Why the latest statement that failed did so: Damaged, NoSpace or NotWritable.
    StoreProblem refusal() const;
    // Refuses changes from now on.
    void reportDamage() { m_problem = StoreProblem::Damaged; }

private:
    void open();
    bool openFile();
    // Makes a file out of the one that was moved away as damaged, now, or when the latest run
    // ended, too late to tell the user. True when there was one.
    bool salvage();
    bool connect(QString const& name);
    bool prepareTables();
    bool makeTables();
    bool runAll(std::span<char const* const> statements);
    StoreProblem openingProblem() const;
    bool moveAway(char const* reason);
    void close();
    void rememberLastId();

    template<typename Work>
    bool transact(Durability durability, Work const& work)
    {
        m_errorCode = 0;
        bool const isDone = begin(durability) && work() && run(QStringLiteral("COMMIT"));
        if (!isDone)
            rollBack();
        return isDone;
    }
    void rollBack();
    bool isRead(QSqlQuery* rows);

    QString m_path;
    QString m_name;
    QSqlDatabase m_database;
    std::map<QString, QSqlQuery> m_queries;
    std::optional<Durability> m_durability;
    StoreProblem m_problem = StoreProblem::None;
    // Of the latest statement that failed; 0 for none.
    int m_errorCode = 0;
    bool m_isReadOnly = false;
    bool m_isAttached = false;
    quint64 m_fileNumber = 0;
    // A file that is made gives no id up to this one.
    SessionId m_lastId = 0;
};

} // namespace tensio
