#include "app/HelpMenu.h"

#include "app/AboutWindow.h"
#include "guide/ConnectionCheckWindow.h"
#include "guide/HelpWindow.h"
#include "toolkit/OpenDialog.h"

#include <QMainWindow>
#include <QMenuBar>

#include <memory>

using namespace Qt::StringLiterals;

namespace tensio {

void addHelpMenu(QMainWindow& window, PortInspector& ports)
{
    auto const showHelp = [&window, help = std::shared_ptr<HelpWindow>()]() mutable {
        if (!help)
            help = std::make_shared<HelpWindow>();
        help->showOn(window);
    };
    auto const checkConnection
        = [&window, &ports] { openDialog(makeConnectionCheckWindow(ports, window)); };
    auto const showAbout = [&window] { openDialog(makeAboutWindow(window)); };

    auto& menu = *window.menuBar()->addMenu(u"ヘルプ(&H)"_s);
    menu.setObjectName(u"helpMenu"_s);
    menu.addAction(u"使い方(&G)"_s, QKeySequence::HelpContents, &window, showHelp)
        ->setMenuRole(QAction::NoRole);
    menu.addAction(u"接続の確認(&C)…"_s, &window, checkConnection)->setMenuRole(QAction::NoRole);
    menu.addSeparator();
    menu.addAction(u"tensioについて(&A)"_s, &window, showAbout)->setMenuRole(QAction::AboutRole);
}

} // namespace tensio
