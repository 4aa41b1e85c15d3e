#pragma once

#include "platform/Alerts.h"

namespace tensio {

class MainQueue;

// Message boxes, above whatever window is in front.
class QtAlerts : public Alerts {
public:
    // The queue is held while an alert is up.
    explicit QtAlerts(MainQueue& queue)
        : m_queue(queue)
    {
    }

    std::size_t runModal(AlertStyle style, std::string const& message,
        std::vector<std::string> const& buttons) override;

private:
    MainQueue& m_queue;
};

} // namespace tensio
