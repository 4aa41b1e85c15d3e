#include "platform/qt/QtMenu.h"

#include <QMenu>

#include <utility>

namespace tensio {

void QtMenu::removeAllItems()
{
    m_menu.clear();
}

void QtMenu::addItem(MenuItem item)
{
    auto* action = m_menu.addAction(QString::fromStdString(item.title));
    action->setData(item.tag);
    action->setCheckable(true);
    action->setChecked(item.isOn);
    // The click has already toggled the check mark; the action corrects it with checkOnly().
    QObject::connect(
        action, &QAction::triggered, action, [work = std::move(item.action)] { work(); });
}

void QtMenu::checkOnly(int tag)
{
    for (auto* action : m_menu.actions())
        action->setChecked(action->data().toInt() == tag);
}

} // namespace tensio
