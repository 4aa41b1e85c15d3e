#pragma once

#include "reactive/MutableProperty.h"
#include "reactive/Scheduler.h"

#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace tensio {

// Later values of the source, at most one an interval: a value passes at once when the interval has
// gone by since the last one passed; otherwise only the newest is kept and passes when it has. The
// source and the scheduler must outlive the subscription.
template<typename T>
Subscription throttle(MutableProperty<T>& source, Seconds interval, Scheduler& scheduler,
    std::function<void(T const&)> observer)
{
    struct State {
        std::function<void(T const&)> observer;
        std::optional<Seconds> lastPassed;
        std::optional<T> waiting;
        Subscription timer;
    };
    auto const state = std::make_shared<State>();
    state->observer = std::move(observer);

    auto pass = [&scheduler](std::shared_ptr<State> const& owner, T const& value) {
        owner->lastPassed = scheduler.now();
        owner->observer(value);
    };
    auto passWaiting = [pass, weakState = std::weak_ptr(state)] {
        auto const owner = weakState.lock();
        if (owner && owner->waiting)
            pass(owner, *std::exchange(owner->waiting, std::nullopt));
    };
    auto receive = [&scheduler, interval, state, pass, passWaiting](T const& value) {
        auto const owner = state;
        if (owner->waiting) {
            owner->waiting = value;
            return;
        }
        auto const elapsed = owner->lastPassed ? scheduler.now() - *owner->lastPassed : interval;
        if (elapsed >= interval) {
            pass(owner, value);
            return;
        }
        owner->waiting = value;
        owner->timer = scheduler.scheduleAfter(interval - elapsed, passWaiting);
    };
    return source.observeChanges(receive);
}

} // namespace tensio
