#include "app/HelpMenu.h"

#include "app/AboutWindow.h"
#include "guide/ConnectionCheckWindow.h"
#include "guide/HelpWindow.h"

#include <QMainWindow>
#include <QMenuBar>

namespace tensio {

namespace {

void openAndDeleteOnClose(QDialog* dialog)
{
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

} // namespace

HelpMenu::HelpMenu(QMainWindow& window, PortInspector& ports)
    : m_window(window)
    , m_ports(ports)
{
    auto& menu = *m_window.menuBar()->addMenu(QStringLiteral("ヘルプ(&H)"));
    menu.setObjectName(QStringLiteral("helpMenu"));
    menu.addAction(
            QStringLiteral("使い方(&G)"), QKeySequence::HelpContents, this, &HelpMenu::showHelp)
        ->setMenuRole(QAction::NoRole);
    menu.addAction(QStringLiteral("接続の確認(&C)…"), this, &HelpMenu::checkConnection)
        ->setMenuRole(QAction::NoRole);
    menu.addSeparator();
    menu.addAction(QStringLiteral("tensioについて(&A)"), this, &HelpMenu::showAbout)
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
    openAndDeleteOnClose(new ConnectionCheckWindow(m_ports, m_window));
}

void HelpMenu::showAbout()
{
    openAndDeleteOnClose(new AboutWindow(m_window));
}

} // namespace tensio
