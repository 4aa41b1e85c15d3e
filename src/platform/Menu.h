#pragma once

#include "reactive/Interface.h"

#include <functional>
#include <string>

namespace tensio {

// The tag identifies the item for checkOnly(); the action runs each time the item is chosen.
struct MenuItem {
    std::string title;
    // Identifies the item to checkOnly().
    int tag = 0;
    bool isOn = false;
    // Runs when the user chooses the item. Must not rebuild the menu.
    std::function<void()> action;
};

// A menu whose items carry a check mark.
class Menu : public Interface {
public:
    virtual void removeAllItems() = 0;
    virtual void addItem(MenuItem item) = 0;
    // Checks every item with this tag and unchecks all others.
    virtual void checkOnly(int tag) = 0;
};

} // namespace tensio
