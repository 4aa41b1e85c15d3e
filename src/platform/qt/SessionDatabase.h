#pragma once

#include "platform/SessionStore.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariant>

#include <map>

namespace tensio {

// The SQLite file of the sessions, with the tables of this version, locked for this program alone.
// A file that is damaged or was written by a newer version is renamed, and a new one is made. If
// damage shows only later, the file stays readable, refuses changes, and is renamed at the end.
class SessionDatabase {
public:
    // What a change survives.
    enum class Durability { ProgramEnd, PowerCut };

    explicit SessionDatabase(QString const& path);
    SessionDatabase(SessionDatabase const&) = delete;
    SessionDatabase& operator=(SessionDatabase const&) = delete;
    ~SessionDatabase();

    bool isOpen() const { return m_database.isOpen(); }
    StoreProblem problem() const { return m_problem; }

    // The values replace the question marks. Null when the statement failed. The query is owned by
    // the database and valid until the same statement runs again.
    QSqlQuery* run(QString const& statement, QVariantList const& values = {});
    // Makes all the changes of the work, or none when it returns false or null.
    template<typename Work>
    bool change(Durability durability, Work const& work)
    {
        if (!isOpen() || m_problem == StoreProblem::Damaged)
            return false;
        m_errorCode = 0;
        bool const isDone = begin(durability) && work() && run(QStringLiteral("COMMIT"));
        if (!isDone)
            rollBack();
        return isDone;
    }
    // Moves what was written from the journal into the file.
    void checkpoint();

private:
    enum class Finding { Fine, Busy, Damaged, Newer, Refused };

    Finding open();
    bool makeTables();
    bool moveAway(QString const& reason);
    void close();
    bool begin(Durability durability);
    void rollBack();

    QString m_path;
    QString m_name;
    QSqlDatabase m_database;
    std::map<QString, QSqlQuery> m_queries;
    Durability m_durability = Durability::PowerCut;
    StoreProblem m_problem = StoreProblem::None;
    // Of the latest statement that failed; 0 for none.
    int m_errorCode = 0;
};

} // namespace tensio
