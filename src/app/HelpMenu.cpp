#include "app/HelpMenu.h"

#include "guide/ConnectionCheckWindow.h"
#include "guide/HelpWindow.h"
#include "toolkit/DesignFrame.h"
#include "toolkit/OpenDialog.h"
#include "toolkit/WindowSize.h"
#include "ui_About.h"

#include <QCoreApplication>
#include <QMainWindow>
#include <QMenuBar>

#include <memory>

using namespace Qt::StringLiterals;

namespace tensio {

namespace {

// What the program is, its version, and the licences of what it is made of.
QDialog* makeAboutWindow(QWidget& parent)
{
    auto* window = new QDialog(&parent);
    Ui::About ui;
    ui.setupUi(window);
    auto const scale
        = dialogScale(window->sizeHint(), scaleOfContent(parent), availableSize(parent));
    scaleLayouts(*window, scale);
    auto const iconSize = ui.iconView->minimumSize() * scale;
    ui.iconView->setFixedSize(iconSize);
    ui.iconView->setPixmap(QIcon(u":/tensio.svg"_s).pixmap(iconSize, window->devicePixelRatioF()));
    ui.versionLabel->setText(ui.versionLabel->text().arg(
        QCoreApplication::applicationVersion(), QString::fromLatin1(qVersion())));
    ui.closeButton->setFocus();
    QObject::connect(ui.closeButton, &QAbstractButton::clicked, window, &QDialog::accept);
    return window;
}

} // namespace

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
