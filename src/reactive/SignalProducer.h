#pragma once

#include "reactive/Signal.h"

#include <functional>
#include <utility>

namespace tensio {

// A recipe of a stream: every start runs its work again, with a fresh observer.
template<typename T, typename E = NoError>
class SignalProducer {
public:
    using Work = std::function<void(Observer<T, E>)>;

    explicit SignalProducer(Work work)
        : m_work(std::move(work))
    {
    }

    // The sink may be called inside start() already. A started stream cannot be cancelled.
    void start(typename Observer<T, E>::Sink sink) const
    {
        m_work(Observer<T, E>(std::move(sink)));
    }

private:
    Work m_work;
};

} // namespace tensio
