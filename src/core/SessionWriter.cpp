#include "core/SessionWriter.h"

#include "core/TensioManager.h"

#include <algorithm>

namespace tensio {

namespace {
// Keeps one write short even when a backlog is written.
constexpr std::size_t maxPoints = 1200;
} // namespace

bool SessionWriter::catchUp(std::size_t mostParts, Date now)
{
    for (; mostParts > 0; --mostParts) {
        auto const part = nextPart(now);
        if (!part)
            return true;
        if (!write(*part))
            return false;
    }
    return true;
}

bool SessionWriter::end(Date now)
{
    // A session that was finished in a press ends with it.
    auto const& finished = m_tensioManager.measurementList.measurements();
    bool const isCut = m_tensioManager.maxPressure.value() > 0.0f && !finished.empty();
    return m_session == 0
        || m_store.end(m_session,
            {isCut ? *finished.back()->timeStamp : now, m_tensioManager.targetPressure.value(),
                m_tensioManager.targetPressurePercent.value()});
}

bool SessionWriter::hasAllFinished() const
{
    return m_finished >= m_tensioManager.measurementList.measurements().size();
}

std::optional<MeasurementPart> SessionWriter::nextPart(Date now) const
{
    auto const& finished = m_tensioManager.measurementList.measurements();
    if (!hasAllFinished()) {
        auto const& each = *finished[m_finished];
        auto part = restOf(each);
        part.best = *each.bestPressure;
        part.target = *each.targetPressure;
        part.timeStamp = *each.timeStamp;
        part.isFinished = m_points + part.points.size() >= each.pressurePoints->size();
        return part;
    }
    auto const& running = m_tensioManager.measurement;
    bool const isFull = m_finished >= MeasurementList::MEASUREMENTS_MAX_COUNT;
    // With a time stamp it has just been finished, and stands in the list.
    if (!running || running->timeStamp || isFull || m_tensioManager.maxPressure.value() <= 0.0f)
        return std::nullopt;
    auto part = restOf(*running);
    part.best = m_tensioManager.maxPressure.value();
    part.target = m_tensioManager.effectiveTarget.value();
    part.timeStamp = now;
    return part.points.empty() ? std::nullopt : std::optional(part);
}

MeasurementPart SessionWriter::restOf(Measurement const& measurement) const
{
    MeasurementPart part;
    part.number = measurement.number;
    part.firstPoint = m_points;
    // A list that was not filled by measuring may hold fewer points than are stored.
    auto const& points = *measurement.pressurePoints;
    auto const rest = std::span(points).subspan(std::min(m_points, points.size()));
    part.points = rest.first(std::min(maxPoints, rest.size()));
    return part;
}

bool SessionWriter::write(MeasurementPart const& part)
{
    // Not begun before: name and target are known only once the port has opened.
    bool const isNew = m_session == 0;
    if (isNew)
        m_session = m_store
                        .begin({m_start, m_tensioManager.username.value(),
                                   m_tensioManager.targetPressure.value(),
                                   m_tensioManager.targetPressurePercent.value(),
                                   m_tensioManager.serialPortManager.isSimulated.value()},
                            part)
                        .value_or(0);
    bool const isStored = isNew ? m_session != 0 : m_store.write(m_session, part);
    if (isStored) {
        m_points = part.isFinished ? 0 : m_points + part.points.size();
        m_finished += part.isFinished ? 1 : 0;
    }
    return isStored;
}

} // namespace tensio
