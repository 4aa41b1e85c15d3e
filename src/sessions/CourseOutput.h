#pragma once

#include "platform/SessionStore.h"

class QWidget;

namespace tensio {

class SessionArchive;
struct SessionServices;

// The course of a person, made of the sessions that are chosen in that window: as pages, and as a
// CSV file. The user is told why sessions do not make one.
void showCourse(std::vector<SessionSummary> const& sessions, SessionArchive& archive,
    SessionServices const& services, QWidget& window);
void saveCourse(std::vector<SessionSummary> const& sessions, SessionArchive& archive,
    SessionServices const& services, QWidget& window);

} // namespace tensio
