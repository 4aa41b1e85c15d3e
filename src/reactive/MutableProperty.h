#pragma once

#include "reactive/Listeners.h"

#include <functional>
#include <memory>
#include <utility>

namespace tensio {

// A value that tells its observers of every assignment, equal values included. Observers run inside
// the assignment. An observer that assigns again makes later observers hear the newest value,
// twice; never an old one after a new one.
template<typename T>
class MutableProperty {
public:
    using Value = T;
    using Observer = std::function<void(T const&)>;

    explicit MutableProperty(T value) { m_state->value = std::move(value); }
    MutableProperty(MutableProperty const&) = delete;
    MutableProperty& operator=(MutableProperty const&) = delete;
    ~MutableProperty() = default;

    T const& value() const { return m_state->value; }

    void setValue(T value)
    {
        // The copy outlives an observer that destroys this property.
        auto const state = m_state;
        state->value = std::move(value);
        state->listeners.call();
    }

    // Later values only.
    Subscription observeChanges(Observer observer)
    {
        return m_state->listeners.add([state = m_state.get(), observer = std::move(observer)] {
            // A copy: an observer that assigns must not change the value under the others' feet.
            T const value = state->value;
            observer(value);
        });
    }

    // The current value at once, then every later one.
    Subscription observe(Observer observer)
    {
        observer(T(value()));
        return observeChanges(std::move(observer));
    }

    // One-way: takes the source's current value at once, then every new one. The source may outlive
    // this property if the subscription does not.
    Subscription bindTo(MutableProperty& source)
    {
        return source.observe([this](T const& value) { setValue(value); });
    }

private:
    struct State {
        T value {};
        Listeners<> listeners;
    };
    std::shared_ptr<State> m_state {std::make_shared<State>()};
};

} // namespace tensio
