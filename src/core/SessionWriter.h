#pragma once

#include "platform/SessionStore.h"

namespace tensio {

struct Measurement;
class TensioManager;

// Writes the session of the running or latest connection to the store, in parts of what is new.
class SessionWriter {
public:
    SessionWriter(TensioManager const& tensioManager, SessionStore& store, Date start)
        : m_tensioManager(tensioManager)
        , m_store(store)
        , m_start(start)
    {
    }

    // Writes at most that many parts: of the finished measurements, then of the running one once a
    // pressure above 0 has come. False when the store refused one; the next call begins with it.
    bool catchUp(std::size_t mostParts, Date now);
    bool end(Date now);

    // 0 until a part is stored.
    SessionId session() const { return m_session; }
    bool hasAllFinished() const;

private:
    std::optional<MeasurementPart> nextPart(Date now) const;
    // From the first point that is not stored; as many as one write may take.
    MeasurementPart restOf(Measurement const& measurement) const;
    bool write(MeasurementPart const& part);

    TensioManager const& m_tensioManager;
    SessionStore& m_store;
    Date m_start;
    SessionId m_session = 0;
    // Finished measurements that are stored whole, and points of the next one that are.
    std::size_t m_finished = 0;
    std::size_t m_points = 0;
};

} // namespace tensio
