#include "toolkit/OnEvent.h"

#include <QObject>

#include <algorithm>
#include <utility>

namespace tensio {

namespace {

class EventFilter : public QObject {
public:
    EventFilter(std::vector<QEvent::Type> types, std::function<void(QObject&)> work, QObject& owner)
        : QObject(&owner)
        , m_types(std::move(types))
        , m_work(std::move(work))
    {
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (std::ranges::count(m_types, event->type()) > 0)
            m_work(*watched);
        return false;
    }

private:
    std::vector<QEvent::Type> m_types;
    std::function<void(QObject&)> m_work;
};

} // namespace

void onEvent(QObject& watched, std::vector<QEvent::Type> types, QObject& owner,
    std::function<void(QObject& receiver)> work)
{
    watched.installEventFilter(new EventFilter(std::move(types), std::move(work), owner));
}

} // namespace tensio
