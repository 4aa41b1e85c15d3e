#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace tensio {

// Runs its clean-up once: at end(), on assignment or on destruction. Clean-ups must not throw.
class [[nodiscard]] Subscription {
public:
    Subscription() = default;
    explicit Subscription(std::function<void()> cleanup);

    // Runs the clean-up now; a second call does nothing.
    void end() { m_cleanup.reset(); }

private:
    struct RunAndDelete {
        void operator()(std::function<void()>* cleanup) const noexcept;
    };
    std::unique_ptr<std::function<void()>, RunAndDelete> m_cleanup;
};

// Declare it last in a class, so that it ends first.
using Subscriptions = std::vector<Subscription>;

inline Subscriptions& operator+=(Subscriptions& subscriptions, Subscription subscription)
{
    subscriptions.push_back(std::move(subscription));
    return subscriptions;
}

} // namespace tensio
