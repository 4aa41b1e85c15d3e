#pragma once

#include "platform/Menu.h"

class QMenu;

namespace tensio {

// A menu of the user interface, which owns its items.
class QtMenu : public Menu {
public:
    explicit QtMenu(QMenu& menu)
        : m_menu(menu)
    {
    }

    void removeAllItems() override;
    void addItem(MenuItem item) override;
    void checkOnly(int tag) override;

private:
    QMenu& m_menu;
};

} // namespace tensio
