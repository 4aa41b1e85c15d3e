#include "app/HelpMenu.h"

#include "app/AboutWindow.h"
#include "guide/ConnectionCheckWindow.h"
#include "guide/HelpWindow.h"
#include "toolkit/OpenDialog.h"

#include <QMainWindow>
#include <QMenuBar>

using namespace Qt::StringLiterals;

namespace tensio {

HelpMenu::HelpMenu(QMainWindow& window, PortInspector& ports)
    : m_window(window)
    , m_ports(ports)
{
    auto& menu = *m_window.menuBar()->addMenu(u"ヘルプ(&H)"_s);
    menu.setObjectName(u"helpMenu"_s);
    menu.addAction(u"使い方(&G)"_s, QKeySequence::HelpContents, this, &HelpMenu::showHelp)
        ->setMenuRole(QAction::NoRole);
    menu.addAction(u"接続の確認(&C)…"_s, this, &HelpMenu::checkConnection)
        ->setMenuRole(QAction::NoRole);
    menu.addSeparator();
    menu.addAction(u"tensioについて(&A)"_s, this, &HelpMenu::showAbout)
        ->setMenuRole(QAction::AboutRole);
}

HelpMenu::~HelpMenu() = default;

void HelpMenu::showHelp()
{
    if (!m_help)
        m_help = std::make_unique<HelpWindow>();
    m_help->showOn(m_window);
}

void HelpMenu::checkConnection()
{
    openDialog(makeConnectionCheckWindow(m_ports, m_window));
}

void HelpMenu::showAbout()
{
    openDialog(makeAboutWindow(m_window));
}

} // namespace tensio
