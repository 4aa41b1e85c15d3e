#include "app/MainMenu.h"

#include "core/TensioManager.h"
#include "sessions/SessionCommands.h"

#include <QMainWindow>
#include <QMenuBar>

#include <functional>

namespace tensio {

MainMenu::MainMenu(QMainWindow& window, QMenu& defaultTargetMenu, QMenu& printMenu,
    AppDelegate& delegate, SessionCommands& sessionCommands, TensioManager& tensioManager)
    : m_window(window)
    , m_delegate(delegate)
{
    m_window.menuBar()->setAccessibleName(QStringLiteral("メニュー"));
    addFileMenu(sessionCommands);
    m_measurementMenu = m_window.menuBar()->addMenu(QStringLiteral("測定(&M)"));
    addViewMenu();
    addPrintMenu(printMenu);
    defaultTargetMenu.setTitle(QStringLiteral("目標圧の初期値(&T)"));
    m_window.menuBar()->addMenu(&defaultTargetMenu);

    // All that the validation looks at: a session's state, the list and the selection.
    m_subscriptions.push_back(
        tensioManager.isMeasuring.observeChanges([this](bool) { validate(); }));
    m_subscriptions.push_back(tensioManager.sliceOfMeasurements.observeChanges(
        [this](Measurements const&) { validate(); }));
    m_subscriptions.push_back(tensioManager.measurementList.selectedAverage.observeChanges(
        [this](float) { validate(); }));
    validate();
}

void MainMenu::addFileMenu(SessionCommands& sessionCommands)
{
    auto& menu = *m_window.menuBar()->addMenu(QStringLiteral("ファイル(&F)"));
    sessionCommands.addTo(menu);
    menu.addSeparator();
    add(menu, QStringLiteral("CSVを保存(&S)…"), &AppDelegate::saveCsvAction, QKeySequence::Save);
    add(menu, QStringLiteral("選択した測定のCSVを保存(&C)…"), &AppDelegate::saveSelectedAction,
        QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S));
    menu.addSeparator();
    add(menu, QStringLiteral("一覧をPDFとして保存(&L)…"), &AppDelegate::saveAsListAction);
    add(menu, QStringLiteral("グリッドをPDFとして保存(&G)…"), &AppDelegate::saveAsGridAction);
    add(menu, QStringLiteral("波形をPDFとして保存(&W)…"), &AppDelegate::saveAsCurvesAction);
    menu.addSeparator();
    add(menu, QStringLiteral("画面を保存(&I)…"), &AppDelegate::saveScreenshotAction);
    menu.addSeparator();
    auto* quit = menu.addAction(QStringLiteral("tensioを終了(&Q)"), &m_window, &QWidget::close);
    quit->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));
    quit->setMenuRole(QAction::QuitRole);
}

void MainMenu::addViewMenu()
{
    m_viewMenu = m_window.menuBar()->addMenu(QStringLiteral("表示(&V)"));
    auto* fullScreen = m_viewMenu->addAction(QStringLiteral("全画面表示(&F)"), Qt::Key_F11, this,
        [this] { m_window.setWindowState(m_window.windowState() ^ Qt::WindowFullScreen); });
    fullScreen->setCheckable(true);
    fullScreen->setMenuRole(QAction::NoRole);
    // The window manager, too, can leave the full screen.
    connect(m_viewMenu, &QMenu::aboutToShow, this,
        [this, fullScreen] { fullScreen->setChecked(m_window.isFullScreen()); });
    m_viewMenu->addSeparator();
}

void MainMenu::addPrintMenu(QMenu& menu)
{
    menu.setTitle(QStringLiteral("印刷(&P)"));
    menu.setObjectName(QStringLiteral("printMenu"));
    m_window.menuBar()->addMenu(&menu);
    add(menu, QStringLiteral("一覧を印刷(&L)…"), &AppDelegate::printAsListAction,
        QKeySequence::Print);
    add(menu, QStringLiteral("グリッドを印刷(&G)…"), &AppDelegate::printAsGridAction,
        QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_P));
    add(menu, QStringLiteral("選択した測定を印刷(&S)…"), &AppDelegate::printSelectedAction);
    add(menu, QStringLiteral("波形を印刷(&W)…"), &AppDelegate::printAsCurvesAction);
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
