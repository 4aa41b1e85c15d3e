#include "platform/qt/MainQueue.h"

#include <QPointer>

#include <utility>

namespace tensio {

void MainQueue::post(std::function<void()> work)
{
    m_waiting.push_back(std::move(work));
    if (m_holds == 0)
        deliverLater();
}

Subscription MainQueue::hold()
{
    willHold.observer.sendValue({});
    ++m_holds;
    return Subscription([queue = QPointer(this)] {
        if (queue && --queue->m_holds == 0)
            queue->deliverLater();
    });
}

void MainQueue::deliverLater()
{
    QMetaObject::invokeMethod(this, &MainQueue::deliver, Qt::QueuedConnection);
}

void MainQueue::deliver()
{
    // One at a time: the work may open a panel, which either holds the queue or runs the rest from
    // its own event loop.
    QPointer const self(this);
    for (auto count = m_waiting.size(); self && count > 0 && m_holds == 0 && !m_waiting.empty();
         --count) {
        auto const work = std::move(m_waiting.front());
        m_waiting.pop_front();
        work();
    }
}

} // namespace tensio
