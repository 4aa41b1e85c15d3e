#pragma once

#include "platform/SessionStore.h"

#include <QString>
#include <QVariant>

class QSqlQuery;

namespace tensio {

class SessionDatabase;

// Copies the sessions of one schema that another one lacks. Of a damaged schema it copies what can
// be read.
class SessionCopy {
public:
    SessionCopy(SessionDatabase& database, QString from, QString to);

    // That of the tables to copy from; 0 when it cannot be read.
    int version() const { return m_version; }
    // Both schemas have the tables.
    bool isPossible();
    // Copies the next session. False at the end, and when a statement failed.
    bool next();
    bool hasFailed() const { return m_hasFailed; }
    // Something of the source could not be read.
    bool hasMetDamage() const { return m_hasMetDamage; }

    double progress() const;
    int count() const { return m_count; }

private:
    // None when it cannot be read, 0 when there is none.
    std::optional<SessionId> number(QString const& statement, QVariantList const& values = {});
    bool findNext();
    // 0 when there is no such session, or when the other schema has it.
    SessionId copyHead();
    SessionId insertHead(QString const& statement, QVariantList const& values);
    bool copyMeasurements(SessionId copy);
    QSqlQuery* run(QString const& statement, QVariantList const& values);

    SessionDatabase& m_database;
    QString m_from;
    QString m_to;
    int m_version = 0;
    SessionId m_session = 0;
    // Where to end if the list of sessions cannot be read.
    SessionId m_lastSession = 0;
    SessionId m_total = 0;
    SessionId m_seen = 0;
    int m_count = 0;
    bool m_hasFailed = false;
    bool m_hasMetDamage = false;
};

} // namespace tensio
