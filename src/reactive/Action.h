#pragma once

#include "reactive/SignalProducer.h"

#include <memory>

namespace tensio {

// A command: takes an input, runs the lazy stream made from it and forwards that stream's events.
// At most one run is active; a run asked for meanwhile does nothing. The command is enabled again
// before the event that ends its run is forwarded, so that who hears of a failure may try anew.
template<typename Input, typename T = Nothing, typename E = NoError>
class Action {
public:
    using Factory = std::function<SignalProducer<T, E>(Input const&)>;

    explicit Action(Factory factory)
        : m_state(std::make_shared<State>(std::move(factory)))
    {
    }

    bool isExecuting() const { return m_state->isExecuting; }

    // Whether the run was started.
    bool apply(Input const& input)
    {
        auto const state = m_state;
        if (state->isExecuting)
            return false;
        state->isExecuting = true;
        state->factory(input).start([weakState = std::weak_ptr(state)](auto const& event) {
            auto const owner = weakState.lock();
            if (!owner)
                return;
            if (isTerminating<T, E>(event))
                owner->isExecuting = false;
            owner->listeners.call(event);
        });
        return true;
    }

    // The events of every run; it goes on after a run has ended.
    Subscription observe(std::function<void(Event<T, E> const&)> listener)
    {
        return m_state->listeners.add(std::move(listener));
    }

private:
    struct State {
        explicit State(Factory theFactory)
            : factory(std::move(theFactory))
        {
        }
        Factory factory;
        bool isExecuting = false;
        Listeners<Event<T, E> const&> listeners;
    };
    std::shared_ptr<State> m_state;
};

} // namespace tensio
