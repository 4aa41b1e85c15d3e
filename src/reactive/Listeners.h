#pragma once

#include "reactive/Subscription.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace tensio {

// The callbacks of one source. While they are called, each may add or end callbacks or destroy the
// source. One that has ended is not called any more; one that was added is first called next time.
template<typename... Args>
class Listeners {
public:
    using Callback = std::function<void(Args...)>;

    Subscription add(Callback callback)
    {
        auto entry = std::make_shared<Callback const>(std::move(callback));
        m_entries->push_back(entry);
        return Subscription([weakEntries = std::weak_ptr(m_entries), entry] {
            if (auto const entries = weakEntries.lock())
                std::erase(*entries, entry);
        });
    }

    void call(Args... args) const
    {
        auto const entries = m_entries;
        for (auto const current = *entries; auto const& entry : current) {
            if (std::ranges::count(*entries, entry) > 0)
                (*entry)(args...);
        }
    }

private:
    using Entries = std::vector<std::shared_ptr<Callback const>>;
    std::shared_ptr<Entries> m_entries {std::make_shared<Entries>()};
};

} // namespace tensio
