#pragma once

#include "reactive/Listeners.h"

#include <memory>
#include <utility>
#include <variant>

namespace tensio {

// The value of a stream whose values carry nothing.
struct Nothing { };

// The error of a stream that never fails; it cannot be constructed.
struct NoError {
    NoError() = delete;
};

template<typename T>
struct ValueEvent {
    T value;
};
template<typename E>
struct FailedEvent {
    E error;
};
struct CompletedEvent { };
struct InterruptedEvent { };

template<typename T, typename E = NoError>
using Event = std::variant<ValueEvent<T>, FailedEvent<E>, CompletedEvent, InterruptedEvent>;

template<typename T, typename E>
bool isTerminating(Event<T, E> const& event)
{
    return !std::holds_alternative<ValueEvent<T>>(event);
}

// The input end of a stream. Copies feed the same stream. After the first failure, completion or
// interruption everything sent is dropped.
template<typename T, typename E = NoError>
class Observer {
public:
    using Sink = std::function<void(Event<T, E> const&)>;

    explicit Observer(Sink sink)
        : m_state(std::make_shared<State>(State {std::move(sink)}))
    {
    }

    void sendValue(T value) const { send(ValueEvent<T> {std::move(value)}); }
    void sendFailed(E error) const { send(FailedEvent<E> {std::move(error)}); }
    void sendCompleted() const { send(CompletedEvent {}); }
    void sendInterrupted() const { send(InterruptedEvent {}); }

    void send(Event<T, E> const& event) const
    {
        // The copy outlives a sink that drops the last observer.
        auto const state = m_state;
        if (state->hasTerminated)
            return;
        state->hasTerminated = isTerminating<T, E>(event);
        state->sink(event);
    }

private:
    struct State {
        Sink sink;
        bool hasTerminated = false;
    };
    std::shared_ptr<State> m_state;
};

// A stream of events that runs whether or not anything listens.
template<typename T, typename E = NoError>
class Signal {
public:
    struct Pipe {
        Signal signal;
        Observer<T, E> observer;
    };

    // A stream together with the observer that feeds it.
    static Pipe pipe()
    {
        Signal signal;
        Observer<T, E> observer(
            [listeners = signal.m_listeners](auto const& event) { listeners->call(event); });
        return {signal, observer};
    }

    // Nothing is delivered after the event that ends the stream, not even a value during whose
    // delivery an earlier listener ended it.
    Subscription observe(std::function<void(Event<T, E> const&)> listener) const
    {
        return m_listeners->add([observer = Observer<T, E>(std::move(listener))](
                                    auto const& event) { observer.send(event); });
    }

    Subscription observeValues(std::function<void(T const&)> listener) const
    {
        return observe([listener = std::move(listener)](auto const& event) {
            if (auto const* value = std::get_if<ValueEvent<T>>(&event))
                listener(value->value);
        });
    }

private:
    Signal() = default;

    std::shared_ptr<Listeners<Event<T, E> const&>> m_listeners {
        std::make_shared<Listeners<Event<T, E> const&>>()};
};

} // namespace tensio
