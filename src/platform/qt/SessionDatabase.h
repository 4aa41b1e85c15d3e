#pragma once

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariant>

#include <map>

namespace tensio {

// The SQLite file of the sessions: opened for this program alone, with the tables of this version.
// A file that is damaged, or of a newer program, is renamed and a new one begun; one in which
// damage shows only later is renamed then and closed.
class SessionDatabase {
public:
    enum class Opening { Fine, InUse, Refused, NewerSetAside, DamagedSetAside };
    enum class Durability { ProgramEnd, PowerCut };

    explicit SessionDatabase(QString const& path);
    SessionDatabase(SessionDatabase const&) = delete;
    SessionDatabase& operator=(SessionDatabase const&) = delete;
    ~SessionDatabase();

    bool isOpen() const { return m_database.isOpen(); }
    Opening opening() const { return m_opening; }

    // Null when the statement failed; valid until it runs again.
    QSqlQuery* run(QString const& statement, QVariantList const& values = {});
    // All that the work does, or nothing when it returns false.
    template<typename Work>
    bool change(Durability durability, Work const& work)
    {
        if (!begin(durability))
            return false;
        bool const isDone = work() && run(QStringLiteral("COMMIT"));
        if (!isDone)
            giveUp();
        return isDone;
    }
    // Moves what was written from the journal into the file.
    void tidyUp();

private:
    enum class Finding { Fine, Busy, Damaged, Newer, Refused };

    Finding open();
    bool makeTables();
    bool setAside(QString const& reason);
    void close();
    bool begin(Durability durability);
    void giveUp();

    QString m_path;
    QString m_name;
    QSqlDatabase m_database;
    std::map<QString, QSqlQuery> m_queries;
    Durability m_durability = Durability::PowerCut;
    Opening m_opening = Opening::Fine;
    bool m_isDamaged = false;
};

} // namespace tensio
