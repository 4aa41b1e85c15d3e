#pragma once

#include "reactive/Interface.h"

#include <functional>
#include <string>

namespace tensio {

struct MenuItem {
    // UTF-8.
    std::string title;
    // Identifies the item to checkOnly().
    int tag = 0;
    // Whether the item carries the check mark at first.
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
