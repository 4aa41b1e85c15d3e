#pragma once

#include <functional>
#include <memory>
#include <vector>

namespace tensio {

// Owns one clean-up, run once: by end(), when replaced, or on destruction. Whoever drops it hears
// nothing any more. Clean-ups must not throw.
class [[nodiscard]] Subscription {
public:
    Subscription() = default;
    explicit Subscription(std::function<void()> cleanup);

    void end() { m_cleanup.reset(); }

private:
    struct RunAndDelete {
        void operator()(std::function<void()>* cleanup) const noexcept;
    };
    std::unique_ptr<std::function<void()>, RunAndDelete> m_cleanup;
};

// Declare it last in a class, so that it ends first.
using Subscriptions = std::vector<Subscription>;

} // namespace tensio
