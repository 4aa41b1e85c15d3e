#include "support/RandomUser.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QTest>
#include <QWheelEvent>

#include <array>

namespace tensio {

namespace {

bool isControl(QWidget const& widget)
{
    return widget.isVisible()
        && (widget.focusPolicy() != Qt::NoFocus || qobject_cast<QAbstractButton const*>(&widget));
}

QWidgetList reachableWindows()
{
    if (auto* modal = QApplication::activeModalWidget())
        return {modal};
    return QApplication::topLevelWidgets();
}

} // namespace

RandomUser::RandomUser(std::mt19937& random)
    : m_random(random)
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool RandomUser::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Show && watched->inherits("QMenu"))
        QMetaObject::invokeMethod(
            this, [this] { answerMenu(); }, Qt::QueuedConnection);
    return QObject::eventFilter(watched, event);
}

QString RandomUser::act()
{
    if (upTo(9) == 0)
        return chooseCommand();
    auto* const control = anyControl();
    if (!control)
        return QStringLiteral("nothing to touch");
    struct Deed {
        char const* name;
        void (RandomUser::*perform)(QWidget&);
    };
    constexpr std::array deeds {Deed {"click", &RandomUser::click},
        Deed {"click", &RandomUser::click}, Deed {"double", &RandomUser::doubleClick},
        Deed {"type into", &RandomUser::type}, Deed {"key", &RandomUser::pressKey},
        Deed {"scroll", &RandomUser::scroll}};
    auto const deed = deeds.at(static_cast<std::size_t>(upTo(deeds.size() - 1)));
    auto const what = QStringLiteral("%1 %2 %3")
                          .arg(QString::fromLatin1(deed.name), control->objectName(),
                              control->accessibleName());

    (this->*deed.perform)(*control);
    return what;
}

QString RandomUser::chooseCommand()
{
    QList<QAction*> commands;
    for (auto* window : reachableWindows()) {
        for (auto const* bar : window->findChildren<QMenuBar*>()) {
            for (auto const* menu : bar->actions())
                commands << menu->menu()->actions();
        }
    }
    // Whatever ends the walk, or opens a window that is not looked at, has a role of its own.
    erase_if(commands, [](QAction const* command) {
        return !command->isEnabled() || command->isSeparator()
            || command->menuRole() != QAction::TextHeuristicRole;
    });
    if (commands.isEmpty())
        return QStringLiteral("nothing to choose");
    auto* const command = commands[upTo(static_cast<int>(commands.size()) - 1)];
    command->trigger();
    return QStringLiteral("choose ") + command->text();
}

int RandomUser::upTo(int highest)
{
    return std::uniform_int_distribution(0, highest)(m_random);
}

QWidget* RandomUser::anyControl()
{
    QWidgetList controls;
    for (auto* window : reachableWindows()) {
        for (auto* widget : window->findChildren<QWidget*>()) {
            if (isControl(*widget))
                controls << widget;
        }
    }
    return controls.isEmpty() ? nullptr : controls[upTo(static_cast<int>(controls.size()) - 1)];
}

void RandomUser::click(QWidget& control)
{
    QTest::mouseClick(&control, upTo(9) == 0 ? Qt::RightButton : Qt::LeftButton);
}

void RandomUser::doubleClick(QWidget& control)
{
    QPointer const clicked(&control);
    QTest::mouseClick(&control, Qt::LeftButton);
    // The first click may have taken the control away.
    if (clicked && clicked->isVisible())
        QTest::mouseDClick(&control, Qt::LeftButton);
}

void RandomUser::type(QWidget& control)
{
    std::array const texts {QStringLiteral("山田"), QStringLiteral("9"), QStringLiteral("35.5"),
        QStringLiteral("12,5"), QStringLiteral("nan"), QStringLiteral("-1e9"),
        QStringLiteral("👩‍👩‍👧🙂e\u0301"), QStringLiteral("a\tb\n"),
        QStringLiteral("")};
    if (upTo(1) == 0) {
        for (auto const& erased : {QKeySequence::SelectAll, QKeySequence::Delete})
            QTest::keySequence(&control, erased);
    }
    QInputMethodEvent event;
    event.setCommitString(texts.at(static_cast<std::size_t>(upTo(texts.size() - 1))));
    QApplication::sendEvent(&control, &event);
}

void RandomUser::pressKey(QWidget& control)
{
    constexpr std::array keys {Qt::Key_Space, Qt::Key_Return, Qt::Key_Escape, Qt::Key_Tab,
        Qt::Key_Backtab, Qt::Key_Up, Qt::Key_Down, Qt::Key_Left, Qt::Key_Right, Qt::Key_Backspace,
        Qt::Key_5, Qt::Key_Period};
    QTest::keyClick(&control, keys.at(static_cast<std::size_t>(upTo(keys.size() - 1))));
}

void RandomUser::scroll(QWidget& control)
{
    QPoint const turn(0, upTo(1) == 0 ? 120 : -120);
    auto const place = control.rect().center();
    QWheelEvent event(place, control.mapToGlobal(place), {}, turn, Qt::NoButton, Qt::NoModifier,
        Qt::NoScrollPhase, false);
    QApplication::sendEvent(&control, &event);
}

void RandomUser::answerMenu()
{
    auto* const menu = QApplication::activePopupWidget();
    if (!menu)
        return;
    auto const rows = menu->findChildren<QWidget*>();
    auto const commands = menu->actions();
    if (!rows.isEmpty() && upTo(3) != 0)
        QTest::mouseClick(rows[upTo(static_cast<int>(rows.size()) - 1)], Qt::LeftButton);
    else if (rows.isEmpty() && !commands.isEmpty() && upTo(3) != 0)
        QTest::mouseClick(menu, Qt::LeftButton, {},
            static_cast<QMenu*>(menu)
                ->actionGeometry(commands[upTo(static_cast<int>(commands.size()) - 1)])
                .center());
    else
        QTest::keyClick(menu, Qt::Key_Escape);
    menu->close();
}

} // namespace tensio
