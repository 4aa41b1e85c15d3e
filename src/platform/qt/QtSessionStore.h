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
    explicit QtSessionStore(QString const& path)
        : m_database(path)
    {
    }

    bool isOpen() const override { return m_database.isOpen(); }
    StoreProblem problem() const override { return m_database.problem(); }

    std::optional<SessionId> begin(SessionHead const& head, MeasurementPart const& part) override;
    bool write(SessionId session, MeasurementPart const& part) override;
    bool end(SessionId session, SessionEnd const& end) override;

    bool markSaved(SessionId session) override;
    bool dismiss(SessionId session) override;
    bool remove(std::vector<SessionId> const& sessions) override;
    bool removeAll() override { return m_database.removeAll(); }
    bool checkpoint() override;

    SessionPage sessions(std::optional<SessionSummary> const& last, std::size_t most) override;
    std::optional<SessionSummary> unsavedSession() override;
    std::optional<StoredSession> load(SessionId session, StoredPoints points) override;

    std::unique_ptr<SessionTransfer> backUp(std::string const& path) override;
    std::unique_ptr<SessionTransfer> restore(std::string const& path) override;

private:
    bool writePart(SessionId session, MeasurementPart const& part);
    bool writePoints(SessionId session, MeasurementPart const& part);
    // False without all points; a measurement has some.
    bool readPoints(SessionId session, StoredMeasurement& measurement);
    bool change(SessionDatabase::Durability durability, QString const& statement,
        QVariantList const& values);

    SessionDatabase m_database;
};

} // namespace tensio
