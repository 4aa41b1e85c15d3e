#pragma once

#include "reactive/MutableProperty.h"

#include <string>

namespace tensio {

class TensioManager;

// What the program is doing and what the user can do next, in words. Equal values are not published
// again, so that nothing is spoken twice.
class StatusViewModel {
public:
    explicit StatusViewModel(TensioManager const& tensioManager);

    MutableProperty<std::string> state {{}};
    MutableProperty<std::string> hint {{}};
    // Which measurements of how many are shown, and how many are selected.
    MutableProperty<std::string> count {{}};
    // Of the last file saved; empty when there is none.
    MutableProperty<std::string> savedPath {{}};

private:
    enum class State { Idle, Connecting, NotConnected, Waiting, Recording };

    void update();
    State currentState() const;
    std::string currentHint(State now) const;
    std::string currentCount(State now) const;

    TensioManager const& m_tensioManager;
    // Of the running connection while it records nothing.
    State m_portState = State::Connecting;
    Subscriptions m_subscriptions;
};

} // namespace tensio
