#pragma once

#include "core/SessionArchive.h"
#include "platform/qt/QtSessionStore.h"
#include "support/Session.h"

namespace tensio {

// A session in virtual time that is kept in the store at this path.
struct Recording {
    explicit Recording(QString const& path)
        : store(path)
        , archive(session.manager, store, session.runLoop, session.clock)
    {
        session.connect();
    }

    Session session;
    QtSessionStore store;
    SessionArchive archive;
};

// Sessions of ten persons, each of that many measurements of three seconds.
inline void fill(QString const& path, int sessions, int measurements)
{
    SessionDatabase database(path);
    auto const insert = [&](int count, QString const& rows) {
        return database.run(QString("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 "
                                    "FROM n WHERE i < %1) INSERT INTO ")
                                .arg(count)
            + rows);
    };
    database.change(SessionDatabase::Durability::ProgramEnd, [&] {
        return insert(sessions,
                   QString(
                       "session (start, name, simulated, count, best, identity) "
                       "SELECT i, '被験者' || (i % 10), 0, %1, 30.0, hex(randomblob(16)) FROM n")
                       .arg(measurements))
            && insert(measurements, "measurement SELECT id, i, 30.0, 30.0, 0, 1 FROM session, n")
            && insert(
                3, "points SELECT session, number, 20 * i, randomblob(80) FROM measurement, n");
    });
}

// As a press makes them, from its beginning.
inline bool isPress(std::vector<float> const& points)
{
    float place = 0.0f;
    return std::ranges::all_of(points, [&](float point) { return point == ++place; });
}

} // namespace tensio
