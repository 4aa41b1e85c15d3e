#pragma once

#include "reactive/SignalProducer.h"

#include <memory>
#include <type_traits>
#include <utility>

namespace tensio {

// A command: takes an input, runs the lazy stream made from it and forwards that stream's events.
// At most one run is active; a run asked for meanwhile does nothing. The command is enabled again
// before the event that ends its run is forwarded, so that a listener may start another run. When
// the command is destroyed, further events of its run are dropped.
template<typename Input, typename T = Nothing, typename E = NoError>
class Action {
public:
    using Factory = std::function<SignalProducer<T, E>(Input const&)>;

    explicit Action(Factory factory)
        : m_state(std::make_shared<State>(State {std::move(factory)}))
    {
    }

    // A run that yields nothing and completes when the work returns.
    template<typename Work>
    requires std::is_void_v<std::invoke_result_t<Work const&, Input const&>>
    explicit Action(Work work)
        : Action(Factory([work = std::move(work)](Input const& input) {
            return SignalProducer<T, E>([work, input](Observer<T, E> const& observer) {
                work(input);
                observer.sendCompleted();
            });
        }))
    {
    }

    bool isExecuting() const { return m_state->isExecuting; }

    // True if the run was started.
    bool apply(Input const& input)
    {
        auto const state = m_state;
        if (state->isExecuting)
            return false;
        state->isExecuting = true;
        state->factory(input).start(
            [weakState = std::weak_ptr(state), hasEnded = false](auto const& event) mutable {
                auto const owner = weakState.lock();
                if (!owner)
                    return;
                if (isTerminating<T, E>(event)) {
                    owner->isExecuting = false;
                    hasEnded = true;
                }
                owner->listeners.call(event, hasEnded);
            });
        return true;
    }

    // The events of this and every later run.
    Subscription observe(std::function<void(Event<T, E> const&)> listener) const
    {
        return m_state->listeners.add(
            [listener = std::move(listener)](auto const& event, bool const& hasRunEnded) {
                // An earlier listener may have ended the run while it received this value.
                if (isTerminating<T, E>(event) || !hasRunEnded)
                    listener(event);
            });
    }

private:
    struct State {
        Factory factory;
        bool isExecuting = false;
        Listeners<Event<T, E> const&, bool const&> listeners {};
    };
    std::shared_ptr<State> m_state;
};

} // namespace tensio
