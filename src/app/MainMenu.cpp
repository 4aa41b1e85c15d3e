#include "app/MainMenu.h"

#include "app/MainWindowController.h"
#include "core/TensioManager.h"
#include "panels/InfoControlsViewController.h"
#include "sessions/SessionCommands.h"

#include <QMainWindow>
#include <QMenuBar>

#include <functional>

using namespace Qt::StringLiterals;

namespace tensio {

MainMenu::MainMenu(MainWindowController& windowController, AppDelegate& delegate,
    SessionCommands& sessionCommands, TensioManager const& tensioManager)
    : m_window(windowController.window())
    , m_delegate(delegate)
{
    auto& content = windowController.content();
    m_window.menuBar()->setAccessibleName(u"メニュー"_s);
    addFileMenu(sessionCommands);
    content.infoControls().addCommands(*m_window.menuBar()->addMenu(u"測定(&M)"_s));
    content.history().addCommands(addViewMenu());
    addPrintMenu(windowController.printMenu());
    windowController.defaultTargetMenu().setTitle(u"目標圧の初期値(&T)"_s);
    m_window.menuBar()->addMenu(&windowController.defaultTargetMenu());

    // All that the validation looks at: a session's state, the list and the selection.
    m_subscriptions += tensioManager.isMeasuring.observeChanges([this](bool) { validate(); });
    m_subscriptions += tensioManager.sliceOfMeasurements.observeChanges(
        [this](Measurements const&) { validate(); });
    m_subscriptions += tensioManager.measurementList.selectedAverage.observeChanges(
        [this](float) { validate(); });
    validate();
}

void MainMenu::addFileMenu(SessionCommands& sessionCommands)
{
    auto& menu = *m_window.menuBar()->addMenu(u"ファイル(&F)"_s);
    sessionCommands.addTo(menu);
    menu.addSeparator();
    add(menu, u"CSVを保存(&S)…"_s, &AppDelegate::saveCsvAction, QKeySequence::Save);
    add(menu, u"選択した測定のCSVを保存(&C)…"_s, &AppDelegate::saveSelectedAction,
        QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S));
    menu.addSeparator();
    add(menu, u"一覧をPDFとして保存(&L)…"_s, &AppDelegate::saveAsListAction);
    add(menu, u"グリッドをPDFとして保存(&G)…"_s, &AppDelegate::saveAsGridAction);
    add(menu, u"波形をPDFとして保存(&W)…"_s, &AppDelegate::saveAsCurvesAction);
    menu.addSeparator();
    add(menu, u"画面を保存(&I)…"_s, &AppDelegate::saveScreenshotAction);
    menu.addSeparator();
    auto* quit = menu.addAction(u"tensioを終了(&Q)"_s, &m_window, &QWidget::close);
    quit->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));
    quit->setMenuRole(QAction::QuitRole);
}

QMenu& MainMenu::addViewMenu()
{
    auto& menu = *m_window.menuBar()->addMenu(u"表示(&V)"_s);
    auto* fullScreen = menu.addAction(u"全画面表示(&F)"_s, Qt::Key_F11, this,
        [this] { m_window.setWindowState(m_window.windowState() ^ Qt::WindowFullScreen); });
    fullScreen->setCheckable(true);
    fullScreen->setMenuRole(QAction::NoRole);
    // The window manager, too, can leave the full screen.
    connect(&menu, &QMenu::aboutToShow, this,
        [this, fullScreen] { fullScreen->setChecked(m_window.isFullScreen()); });
    menu.addSeparator();
    return menu;
}

void MainMenu::addPrintMenu(QMenu& menu)
{
    menu.setTitle(u"印刷(&P)"_s);
    menu.setObjectName(u"printMenu"_s);
    m_window.menuBar()->addMenu(&menu);
    add(menu, u"一覧を印刷(&L)…"_s, &AppDelegate::printAsListAction, QKeySequence::Print);
    add(menu, u"グリッドを印刷(&G)…"_s, &AppDelegate::printAsGridAction,
        QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_P));
    add(menu, u"選択した測定を印刷(&S)…"_s, &AppDelegate::printSelectedAction);
    add(menu, u"波形を印刷(&W)…"_s, &AppDelegate::printAsCurvesAction);
}

void MainMenu::add(
    QMenu& menu, QString const& title, AppDelegate::Command command, QKeySequence const& shortcut)
{
    auto* action
        = menu.addAction(title, this, [this, command] { std::invoke(command, m_delegate); });
    action->setShortcut(shortcut);
    m_commands.emplace_back(action, command);
}

void MainMenu::validate()
{
    for (auto const& [action, command] : m_commands)
        action->setEnabled(m_delegate.validateMenuItem(command));
}

} // namespace tensio
