#include "core/MeasurementList.h"

#include <algorithm>
#include <cassert>
#include <numeric>
#include <utility>

namespace tensio {

namespace {

std::vector<float> bestPressures(Measurements const& measurements)
{
    std::vector<float> pressures;
    std::ranges::transform(measurements, std::back_inserter(pressures),
        [](auto const& each) { return *each->bestPressure; });
    return pressures;
}

} // namespace

Measurements MeasurementList::slice() const
{
    auto const first = m_measurements.begin() + m_startingIndex;
    return {first, first + std::min(ITEMS, m_measurements.end() - first)};
}

void MeasurementList::add(std::shared_ptr<Measurement> measurement)
{
    assert(measurement->bestPressure && measurement->targetPressure && measurement->timeStamp
        && measurement->pressurePoints);
    if (m_measurements.size() >= MEASUREMENTS_MAX_COUNT)
        return;
    observeSelection(*measurement);
    m_measurements.push_back(std::move(measurement));
    showLast();
    publish();
}

void MeasurementList::setStartingIndex(std::ptrdiff_t index)
{
    if (index < 0 || std::ssize(m_measurements) - index < ITEMS || index == m_startingIndex)
        return;
    m_startingIndex = index;
    publish();
}

void MeasurementList::assign(Measurements measurements)
{
    m_subscriptions.clear();
    m_measurements = std::move(measurements);
    m_measurements.resize(std::min(m_measurements.size(), MEASUREMENTS_MAX_COUNT));
    for (auto const& each : m_measurements)
        observeSelection(*each);
    showLast();
    updateSelectedAverage();
    publish();
}

Measurements MeasurementList::counted() const
{
    Measurements counted;
    std::ranges::copy_if(m_measurements, std::back_inserter(counted),
        [](auto const& each) { return each->isCounted.value(); });
    return counted;
}

float MeasurementList::maxSelectedPressure() const
{
    auto const pressures = bestPressures(counted());
    return pressures.empty() ? 0.0f : std::ranges::max(pressures);
}

float MeasurementList::minSelectedPressure() const
{
    auto const pressures = bestPressures(counted());
    return pressures.empty() ? 0.0f : std::ranges::min(pressures);
}

void MeasurementList::observeSelection(Measurement& measurement)
{
    m_subscriptions
        += measurement.isCounted.observeChanges([this](bool) { updateSelectedAverage(); });
}

void MeasurementList::showLast()
{
    m_startingIndex = std::max<std::ptrdiff_t>(0, std::ssize(m_measurements) - ITEMS);
}

void MeasurementList::updateSelectedAverage()
{
    auto const pressures = bestPressures(counted());
    auto const sum = std::accumulate(pressures.begin(), pressures.end(), 0.0f);
    selectedAverage.setValue(pressures.empty() ? 0.0f : sum / static_cast<float>(pressures.size()));
    updateEnabledStates();
}

void MeasurementList::updateEnabledStates()
{
    bool const isFull = counted().size() >= maxSelected;
    for (auto const& measurement : m_measurements)
        measurement->isEnabled.setValue(!isFull || measurement->isCounted.value());
}

} // namespace tensio
