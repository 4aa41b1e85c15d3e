#include "reactive/Subscription.h"

#include <utility>

namespace tensio {

Subscription::Subscription(std::function<void()> cleanup)
    : m_cleanup(new std::function(std::move(cleanup)))
{
}

void Subscription::RunAndDelete::operator()(std::function<void()>* cleanup) const noexcept
{
    (*cleanup)();
    delete cleanup;
}

} // namespace tensio
