#pragma once

#include "platform/SessionStore.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariant>

#include <functional>
#include <span>

namespace tensio {

// The SQLite file of the sessions, with the tables of this version, locked for this program alone.
// A file that is damaged or was written by a newer version is moved away, and a new one is made;
// into it goes what can still be read of the damaged one. If damage shows only later, the file
// stays readable, refuses changes, and is moved away at the end. A file that cannot be written is
// opened for reading.
class SessionDatabase {
    Q_DISABLE_COPY_MOVE(SessionDatabase)

public:
    // Schemas in statements: the file, and the one that is attached.
    static constexpr QLatin1StringView own {"main"};
    static constexpr QLatin1StringView other {"other"};

    // What a change survives.
    enum class Durability { ProgramEnd, PowerCut };

    explicit SessionDatabase(QString path);
    ~SessionDatabase();

    bool isOpen() const { return m_database.isOpen(); }
    StoreProblem problem() const { return m_problem; }
    QString const& path() const { return m_path; }
    // No session has had an id above this one.
    SessionId lastId() const { return m_lastId; }

    // The values replace the question marks. Inactive when the statement failed.
    QSqlQuery query(QString const& statement, QVariantList const& values = {});
    bool run(QString const& statement, QVariantList const& values = {});
    // The schema replaces %1.
    bool runAll(std::span<char const* const> statements, QLatin1StringView schema = own);
    using Take = std::function<void(QSqlQuery const&)>;
    // False when a row could not be read.
    bool read(QString const& statement, QVariantList const& values, Take const& take);
    // The only row; 0 for NULL. None when it cannot be read.
    std::optional<qint64> number(QString const& statement, QVariantList const& values = {});

    // Makes all the changes of the work, or none when it returns false.
    bool change(Durability durability, std::function<bool()> const& work);
    // Moves what was written from the journal into the file.
    bool checkpoint();
    // Also the files that were moved away.
    bool removeAll();
    // True when the file that was opened is gone; the one that is there now, or a new one, is open.
    bool reopenIfVanished();

    // False, with the reason in problem(), where nothing may be changed now.
    bool canChange();
    // Another file. Until it is detached, change() refuses.
    bool attach(QString const& name);
    // Undoes what has not been committed.
    void detach();
    bool begin(Durability durability);
    // Why the latest statement failed: Damaged, InUse, NoSpace or NotWritable.
    StoreProblem refusal() const;
    // Refuses changes from now on.
    void reportDamage() { m_problem = StoreProblem::Damaged; }

private:
    void open();
    StoreProblem openFile();
    StoreProblem openForWriting();
    StoreProblem openForReading();
    // Makes a file out of the one that was moved away as damaged, now, or when the latest run
    // ended, too late to tell the user. True when there was one.
    bool salvage();
    bool connect(QString const& name);
    bool moveAway(QLatin1StringView reason);
    void close();
    void rememberLastId();
    bool isWritable() const;
    // Returns false.
    bool refuse();

    QString m_path;
    QSqlDatabase m_database;
    StoreProblem m_problem = StoreProblem::None;
    // Of the latest statement; 0 when it succeeded.
    int m_errorCode = 0;
    bool m_isAttached = false;
    quint64 m_fileNumber = 0;
    quint64 m_journalNumber = 0;
    SessionId m_lastId = 0;
};

} // namespace tensio
