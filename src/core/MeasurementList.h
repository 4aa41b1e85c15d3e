#pragma once

#include "core/Measurement.h"
#include "reactive/Signal.h"

#include <cstddef>

namespace tensio {

// The finished measurements of the connection, oldest first; the visible range of at most five of
// them; and the selection of at most three, with the average of their best pressures.
class MeasurementList {
public:
    // Measurements in the visible range, and at most in the list.
    static constexpr std::ptrdiff_t ITEMS = 5;
    static constexpr std::size_t MEASUREMENTS_MAX_COUNT = 99;
    static constexpr std::size_t maxSelected = 3;

    std::ptrdiff_t startingIndex() const { return m_startingIndex; }
    Measurements const& measurements() const { return m_measurements; }
    // The slice, after every change of the visible range or of the contents.
    Signal<Measurements> const& signal() const { return m_pipe.signal; }
    // kPa; 0 when nothing is selected.
    MutableProperty<float> selectedAverage {0.0f};

    // At most ITEMS measurements from startingIndex() on.
    Measurements slice() const;
    // The measurement must be finished. A full list ignores it.
    void add(std::shared_ptr<Measurement> measurement);
    // Ignores an index below 0 and one that would leave fewer than ITEMS visible.
    void setStartingIndex(std::ptrdiff_t index);
    // Replaces all measurements, publishing once. They must be finished; a list holds at most
    // MEASUREMENTS_MAX_COUNT. The visible range is the last.
    void assign(Measurements measurements);
    // Empties the list, the visible range and the selection.
    void reset() { assign({}); }

    // The selected measurements, in list order.
    Measurements counted() const;
    // kPa; 0 when nothing is selected.
    float maxSelectedPressure() const;
    float minSelectedPressure() const;

private:
    void observeSelection(Measurement& measurement);
    void showLast();
    void updateSelectedAverage();
    void updateEnabledStates();
    void publish() const { m_pipe.observer.sendValue(slice()); }

    std::ptrdiff_t m_startingIndex = 0;
    Measurements m_measurements;
    Signal<Measurements>::Pipe m_pipe {Signal<Measurements>::pipe()};
    Subscriptions m_subscriptions;
};

} // namespace tensio
