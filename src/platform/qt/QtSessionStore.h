#pragma once

#include "platform/SessionStore.h"
#include "platform/qt/SessionDatabase.h"

namespace tensio {

// Sessions in an SQLite file. Points are stored in blobs of at most 20 little-endian floats, in
// kPa.
class QtSessionStore : public SessionStore {
public:
    // sessions.db in the user's data folder.
    QtSessionStore();
    // Makes the folder and the file if they are missing; problem() says what went wrong.
    explicit QtSessionStore(QString const& path);

    bool isOpen() const override { return m_database.isOpen(); }
    StoreProblem problem() const override { return m_database.problem(); }

    std::optional<SessionId> begin(SessionHead const& head) override;
    bool write(SessionId session, MeasurementPart const& part) override;
    bool end(SessionId session, Date date) override;

    bool markSaved(SessionId session) override;
    bool putAside(SessionId session) override;
    bool remove(SessionId session) override;
    bool removeAll() override;

    std::vector<SessionSummary> sessions(std::string const& namePart) override;
    std::optional<SessionSummary> unsavedSession() override;
    std::optional<StoredSession> load(SessionId session) override;

private:
    bool writePoints(SessionId session, MeasurementPart const& part);
    bool readPoints(SessionId session, StoredMeasurement& measurement);
    bool changeDurably(QString const& statement, QVariantList const& values = {});

    SessionDatabase m_database;
};

} // namespace tensio
