#pragma once

#include "core/Course.h"
#include "platform/SessionStore.h"
#include "sessions/SessionServices.h"

#include <QObject>

namespace tensio {

class SessionArchive;

// What the list of past sessions gives of those that are chosen in it: the course of a person as
// pages and as a file, and a CSV file of each.
class SessionOutput : public QObject {
    Q_OBJECT

public:
    using Sessions = std::vector<SessionSummary>;

    // Archive and services must outlive it.
    SessionOutput(SessionArchive& archive, SessionServices services, QWidget& list);

    void showCourse(Sessions const& sessions);
    void saveCourse(Sessions const& sessions);
    // At least one.
    void saveEach(Sessions const& sessions);

Q_SIGNALS:
    void saved(SessionId session);

private:
    // None when they do not make one, which the user has been told.
    std::optional<Course> course(Sessions const& sessions);
    void saveInto(QString const& folder, Sessions const& sessions);
    void tellEnd(TransferState state, std::size_t count, Sessions const& sessions);

    SessionArchive& m_archive;
    SessionServices m_services;
    QWidget& m_list;
    // Damage hides nothing of what was saved.
    bool m_isComplete = true;
};

} // namespace tensio
