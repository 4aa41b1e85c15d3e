#pragma once

#include "platform/Clock.h"
#include "reactive/Interface.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tensio {

// 0 means no session. The id of a removed session is not used again.
using SessionId = long long;

// What is known of a session when its first measurement is written. Pressures are in kPa, names in
// UTF-8, here and below.
struct SessionHead {
    Date start;
    std::string name;
    float target = 0.0f;
    // 1.0 stands for 100 %.
    float targetPercent = 1.0f;
    bool isSimulated = false;
};

struct SessionSummary {
    SessionId id = 0;
    Date start;
    std::string name;
    // The number of its measurements and their best pressure.
    int count = 0;
    float best = 0.0f;
    // A CSV file of all its measurements has been written.
    bool isSaved = false;
    bool isSimulated = false;

    bool operator==(SessionSummary const&) const = default;
};

// The state of a measurement, and those of its points that are new.
struct MeasurementPart {
    // From 1.
    int number = 0;
    float best = 0.0f;
    float target = 0.0f;
    Date timeStamp;
    bool isFinished = false;
    // How many points were written before.
    std::size_t firstPoint = 0;
    // Not owned.
    std::span<float const> points;
};

struct StoredMeasurement {
    int number = 0;
    float best = 0.0f;
    float target = 0.0f;
    Date timeStamp;
    std::vector<float> points;

    bool operator==(StoredMeasurement const&) const = default;
};

// As the session was when it ended.
struct SessionEnd {
    Date date;
    float target = 0.0f;
    float targetPercent = 1.0f;
};

struct StoredSession {
    SessionSummary summary;
    std::vector<StoredMeasurement> measurements;
    // Base target, and the percentage applied to it (1.0 stands for 100 %): those of the end, or of
    // the beginning when there is no end.
    float target = 0.0f;
    float targetPercent = 1.0f;
    // None when the program ended first.
    std::optional<Date> end = std::nullopt;
    // False when damage hides a measurement, or the points of one.
    bool isComplete = true;

    bool operator==(StoredSession const&) const = default;
};

enum class StoredPoints { Loaded, LeftOut };

struct SessionPage {
    // Newest start first.
    std::vector<SessionSummary> sessions;
    // False when damage hides some.
    bool isComplete = true;
};

enum class StoreProblem {
    None,
    // Nothing can be stored or read: a second program has the store open, or it cannot be opened.
    InUse,
    NotOpened,
    // A file was moved away at the opening, and a new one begun. What could still be read of a
    // damaged one is in the new one.
    NewerSetAside,
    DamagedSetAside,
    // A change was refused; a later one may succeed. Found by the opening, NotWritable means that
    // the store can only be read, NoSpace that it could not be opened.
    NoSpace,
    NotWritable,
    // The file was deleted, emptied or replaced after the opening. The store goes on with the file
    // that is there now, or with a new one.
    Vanished,
    // Damage showed after the opening: nothing more is stored, but undamaged sessions are readable.
    Damaged
};

// DoneInPart: without what damage hides.
enum class TransferState { Running, Done, DoneInPart, NoSpace, NotWritable, Unreadable, Newer };

// Copies sessions between the store and other files in short steps.
class SessionTransfer : public Interface {
public:
    // Not to be called again once it is not Running any more.
    virtual TransferState step() = 0;
    // From 0 to 1.
    virtual double progress() const = 0;
    // Sessions written so far.
    virtual int count() const = 0;
};

// The sessions on the disk. Each change is made as a whole or not at all. False or an empty result
// means that it was refused; problem() then says why. None waits for another program; one that is
// to survive a power cut waits for the disk.
class SessionStore : public Interface {
public:
    virtual bool isOpen() const = 0;
    // What the opening found or, once a change has been refused, the reason of the latest refusal;
    // a later success does not clear it.
    virtual StoreProblem problem() const = 0;

    // Stores a session with the first part of its first measurement.
    virtual std::optional<SessionId> begin(SessionHead const& head, MeasurementPart const& part)
        = 0;
    // Afterwards a finished measurement survives a power cut, a running one a crash of the program.
    virtual bool write(SessionId session, MeasurementPart const& part) = 0;
    virtual bool end(SessionId session, SessionEnd const& end) = 0;

    virtual bool markSaved(SessionId session) = 0;
    // unsavedSession() no longer returns it.
    virtual bool dismiss(SessionId session) = 0;
    // Leaves nothing of them on the disk; takes about 0.1 ms for each.
    virtual bool remove(std::vector<SessionId> const& sessions) = 0;
    // Also the files that were moved away.
    virtual bool removeAll() = 0;
    // Moves what was written from the journal into the file; waits for the disk, which the next
    // write of a running measurement then need not. To be called while no records come.
    virtual bool checkpoint() = 0;

    // At most that many sessions older than the last one of the page before; the newest if none.
    virtual SessionPage sessions(std::optional<SessionSummary> const& last, std::size_t most) = 0;
    // The newest session, if it is neither saved nor dismissed.
    virtual std::optional<SessionSummary> unsavedSession() = 0;
    virtual std::optional<StoredSession> load(SessionId session, StoredPoints points) = 0;

    // Both take steps of at most 20 ms, but for the first with more than 20,000 sessions and the
    // last of a restore, which waits for the disk about 5 ms for each MB. Destroyed before it is
    // Done, a transfer changes nothing and leaves no file. While it runs, the store, which must
    // outlive it, refuses changes. The path is in UTF-8. Replaces the file there once all sessions
    // are copied.
    virtual std::unique_ptr<SessionTransfer> backUp(std::string const& path) = 0;
    // Adds the sessions that are not there yet, all of them at the end.
    virtual std::unique_ptr<SessionTransfer> restore(std::string const& path) = 0;
};

} // namespace tensio
