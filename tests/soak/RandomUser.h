#pragma once

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QTest>
#include <QWheelEvent>

#include <random>
#include <vector>

namespace tensio {

// Clicks, types, presses keys, scrolls and chooses commands at random, in the windows that can be
// reached at that moment.
class RandomUser : public QObject {
    int upTo(int highest) { return std::uniform_int_distribution(0, highest)(m_random); }

    template<typename List>
    auto anyOf(List const& list)
    {
        return *std::next(std::begin(list), upTo(static_cast<int>(std::size(list)) - 1));
    }

public:
    explicit RandomUser(std::mt19937& random)
        : m_random(random)
    {
        QCoreApplication::instance()->installEventFilter(this);
    }

    // Does one thing, and says what.
    QString act()
    {
        if (upTo(9) == 0)
            return chooseCommand();
        QWidgetList controls;
        for (auto* window : reachableWindows()) {
            for (auto* widget : window->findChildren<QWidget*>()) {
                bool const isControl = widget->focusPolicy() != Qt::NoFocus
                    || qobject_cast<QAbstractButton*>(widget);
                if (widget->isVisible() && isControl)
                    controls << widget;
            }
        }
        return controls.isEmpty() ? QStringLiteral("nothing to touch") : touch(*anyOf(controls));
    }

    // A menu has an event loop of its own, so it is answered from in there.
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Show && watched->inherits("QMenu"))
            QMetaObject::invokeMethod(
                this, [this] { answerMenu(); }, Qt::QueuedConnection);
        return false;
    }

private:
    static QWidgetList reachableWindows()
    {
        auto* const modal = QApplication::activeModalWidget();
        return modal ? QWidgetList {modal} : QApplication::topLevelWidgets();
    }

    QString chooseCommand()
    {
        QList<QAction*> commands;
        for (auto* window : reachableWindows()) {
            for (auto const* bar : window->findChildren<QMenuBar*>()) {
                for (auto const* menu : bar->actions())
                    commands << menu->menu()->actions();
            }
        }
        // What ends the walk, or opens a window of its own, has a role.
        erase_if(commands, [](QAction const* command) {
            return !command->isEnabled() || command->isSeparator()
                || command->menuRole() != QAction::TextHeuristicRole;
        });
        if (commands.isEmpty())
            return QStringLiteral("nothing to choose");
        auto* const command = anyOf(commands);
        command->trigger();
        return QStringLiteral("choose ") + command->text();
    }

    QString touch(QWidget& control)
    {
        auto const deed = upTo(5);
        auto const what = QStringLiteral("%1 %2").arg(deed).arg(control.objectName());
        QPointer const touched(&control);
        if (deed <= 2)
            QTest::mouseClick(&control, upTo(9) == 0 ? Qt::RightButton : Qt::LeftButton);
        // The first click may have taken the control away.
        if (deed == 2 && touched && touched->isVisible())
            QTest::mouseDClick(&control, Qt::LeftButton);
        if (deed == 3)
            type(control);
        if (deed == 4)
            QTest::keyClick(&control,
                anyOf(std::vector {Qt::Key_Space, Qt::Key_Return, Qt::Key_Escape, Qt::Key_Tab,
                    Qt::Key_Backtab, Qt::Key_Up, Qt::Key_Down, Qt::Key_Left, Qt::Key_Right,
                    Qt::Key_Backspace, Qt::Key_5}));
        if (deed == 5)
            scroll(control);
        return what;
    }

    void type(QWidget& control)
    {
        if (upTo(1) == 0) {
            QTest::keySequence(&control, QKeySequence::SelectAll);
            QTest::keySequence(&control, QKeySequence::Delete);
        }
        QInputMethodEvent event;
        event.setCommitString(
            anyOf(QStringList {QStringLiteral("山田"), QStringLiteral("9"), QStringLiteral("35.5"),
                QStringLiteral("12,5"), QStringLiteral("nan"), QStringLiteral("-1e9"),
                QStringLiteral("👩‍👩‍👧🙂e\u0301"), QStringLiteral("a\tb\n")}));
        QApplication::sendEvent(&control, &event);
    }

    void scroll(QWidget& control)
    {
        auto const place = control.rect().center();
        QWheelEvent event(place, control.mapToGlobal(place), {}, {0, upTo(1) == 0 ? 120 : -120},
            Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&control, &event);
    }

    void answerMenu()
    {
        auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (!menu)
            return;
        auto const rows = menu->findChildren<QWidget*>();
        if (upTo(3) == 0)
            QTest::keyClick(menu, Qt::Key_Escape);
        else if (!rows.isEmpty())
            QTest::mouseClick(anyOf(rows), Qt::LeftButton);
        else if (!menu->isEmpty())
            anyOf(menu->actions())->trigger();
        menu->close();
    }

    std::mt19937& m_random;
};

} // namespace tensio
