#pragma once

#include "reactive/MutableProperty.h"

#include <memory>
#include <utility>

namespace tensio {

// The latest pair at once, then whenever either changes, also during the first call. Both
// properties must outlive the subscription.
template<typename A, typename B, typename Observer>
Subscription combineLatest(
    MutableProperty<A> const& first, MutableProperty<B> const& second, Observer observer)
{
    auto publish = [&first, &second, observer = std::move(observer)] {
        observer(A(first.value()), B(second.value()));
    };
    auto both = std::make_shared<Subscriptions>();
    *both += first.observeChanges([publish](A const&) { publish(); });
    *both += second.observeChanges([publish](B const&) { publish(); });
    publish();
    return Subscription([both] { both->clear(); });
}

} // namespace tensio
