#pragma once

#include "platform/Clock.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tensio {

struct SessionSummary;
struct StoredSession;

// What a session contributes to the course of a person; pressures in kPa.
struct CourseEntry {
    Date start;
    // Finished measurements; without any, best and average say nothing.
    int presses = 0;
    float best = 0.0f;
    // Of the best pressures of all measurements.
    float average = 0.0f;
    float target = 0.0f;
};

// Sessions of one name, at least one, oldest first.
struct Course {
    std::string name;
    bool isSimulated = false;
    std::vector<CourseEntry> entries;
    // False when damage hides measurements.
    bool isComplete = true;
};

// On the page and in the file of a course that is not complete.
constexpr auto courseIncompleteMessage
    = "記録の一部が壊れているため、含まれていない測定があります。";

// Why these sessions do not make a course, as a sentence for the user; nothing when they do.
std::optional<std::string> courseRefusal(std::span<SessionSummary const> sessions);

// Of sessions that make a course, in any order; their points are not needed.
Course courseOf(std::vector<StoredSession> sessions);

} // namespace tensio
