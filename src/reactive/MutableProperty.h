#pragma once

#include "reactive/Listeners.h"

#include <functional>
#include <memory>
#include <utility>

namespace tensio {

// A value that notifies its observers of every assignment, equal values included. Observers run
// inside the assignment. If an observer assigns, the remaining observers are called twice with the
// newest value; never with an older one.
template<typename T>
class MutableProperty {
public:
    using Observer = std::function<void(T const&)>;

    explicit MutableProperty(T value) { m_state->value = std::move(value); }
    MutableProperty(MutableProperty const&) = delete;
    MutableProperty& operator=(MutableProperty const&) = delete;
    ~MutableProperty() = default;

    T const& value() const { return m_state->value; }

    // Calls every observer before it returns. An observer may assign again, subscribe, unsubscribe
    // or destroy this property.
    void setValue(T value)
    {
        prepare(std::move(value));
        publish();
    }

    // The two halves of setValue(), for values that change together: none is published before all
    // are assigned.
    void prepare(T value) { m_state->value = std::move(value); }
    void publish() const
    {
        // The copy outlives an observer that destroys this property.
        auto const state = m_state;
        state->listeners.call();
    }

    // Later values only. The subscription may outlive the property.
    Subscription observeChanges(Observer observer) const
    {
        return m_state->listeners.add([state = m_state.get(), observer = std::move(observer)] {
            // A copy: the observer keeps its argument even if it assigns.
            T const value = state->value;
            observer(value);
        });
    }

    // The current value at once, then every later one, also one assigned during the first call.
    Subscription observe(Observer observer) const
    {
        auto subscription = observeChanges(observer);
        observer(T(value()));
        return subscription;
    }

    // One-way: takes the source's current value at once, then every new one. The subscription must
    // end before this property does; the source may end before either.
    Subscription bindTo(MutableProperty const& source)
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
