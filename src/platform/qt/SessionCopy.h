#pragma once

#include "platform/qt/SessionDatabase.h"

#include <set>

namespace tensio {

// Copies the sessions of one schema that another one lacks. Of a damaged schema it copies what can
// be read.
class SessionCopy {
public:
    SessionCopy(SessionDatabase& database, QLatin1StringView from, QLatin1StringView to);

    // That of the tables to copy from; 0 when it cannot be read.
    int version() const { return m_version; }
    // Copies the next session. False at the end, and when something cannot be written.
    bool next();
    // Damaged: something could not be read, and was left out. Otherwise why next() has failed.
    StoreProblem problem() const { return m_problem; }

    double progress() const;
    // Sessions written.
    int count() const { return m_count; }

private:
    // 0 when there is no such session, or when the other schema has it.
    SessionId copyHead(SessionId session);
    void copyMeasurements(SessionId session, SessionId copy);
    QSqlQuery query(QString const& statement, QVariantList const& values);
    // Returns its argument.
    bool note(bool isDone);
    bool canGoOn() const;

    SessionDatabase& m_database;
    QLatin1StringView m_from;
    QLatin1StringView m_to;
    int m_version;
    std::set<SessionId> m_rest;
    std::size_t m_total;
    int m_count = 0;
    StoreProblem m_problem = StoreProblem::None;
};

} // namespace tensio
