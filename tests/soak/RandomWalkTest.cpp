#include "support/Desk.h"

#include <QPrintPreviewWidget>
#include <QTest>

#include <gtest/gtest.h>
#include <random>

using namespace tensio;

namespace {

// The program with all that happens around it: the user, the device, its cable, the disk, time.
class Walk
    : public QObject
    , Desk {
public:
    std::map<std::string, int> reached;

    explicit Walk(unsigned seed)
        : m_random(seed)
    {
        window.setMinimumSize(0, 0);
        window.resize(260, 173);
        QCoreApplication::instance()->installEventFilter(this);
    }

    void step()
    {
        alerts.answer = isOnceIn(2) ? 0 : 1;
        saving.answer = isOnceIn(2) ? std::optional<std::string>("/file") : std::nullopt;
        saving.diskIsFull = isOnceIn(2);
        store.refusals = isOnceIn(50) ? 2 : store.refusals;
        auto const turn = upTo(99);
        if (turn < 60)
            return userActs();
        if (turn < 85)
            return lineActs();
        if (turn < 86)
            window.resize(1 + upTo(400), 1 + upTo(300));
        runLoop.advance(Seconds(upTo(30) * 0.1));
        QCoreApplication::processEvents();
    }

    std::string brokenInvariant()
    {
        bool const isMeasuring = manager.isMeasuring.value();
        auto const count = manager.measurementList.measurements().size();
        auto const selected = manager.measurementList.counted().size();
        auto const* const preview = window.findChild<QPrintPreviewWidget*>();
        // A course of stored sessions is previewed above their list, whatever the window shows.
        bool const isPreview
            = preview && preview->isVisible() && preview->window()->parentWidget() == &window;
        bool const hasResult = !isMeasuring && count > 0;
        auto const isEnabled = [&](char const* name) { return find(window, name).isEnabled(); };
        reached["preview"] += isPreview ? 1 : 0;
        reached["full list"] += count == 99 ? 1 : 0;
        reached["three selected"] += selected == 3 ? 1 : 0;
        for (auto const& [invariant, isKept] :
            {std::pair {"at most three selected", selected <= (isMeasuring ? 0U : 3U)},
                {"measuring is connected", isMeasuring == manager.connectAction.isExecuting()},
                // The clock, the archive, the end of a burst, the blinking, two read-outs, a
                // frame and what paces it, and a screenshot.
                {"no more timers than uses", runLoop.liveTimers() <= 9},
                {"start when idle", isEnabled("startButton") == !isMeasuring},
                {"finish when measuring", isEnabled("finishButton") == isMeasuring},
                {"save what there is between sessions", isEnabled("saveButton") == hasResult},
                {"print what there is between sessions", !isPreview || hasResult},
                {"open between sessions", !isMeasuring || !m_openPast.isEnabled()},
                {"the screen stays on while measuring", isSleepInhibited == isMeasuring},
                {"dimmed while the dialog is open",
                    manager.isShowingPopup.value()
                        == find<QWidget>(window, "coverView").isVisible()}}) {
            if (!isKept)
                return invariant;
        }
        return {};
    }

    // A menu has its own event loop, so it is answered from in there.
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Show && watched->inherits("QMenu"))
            QMetaObject::invokeMethod(
                this, [this] { answerMenu(); }, Qt::QueuedConnection);
        return false;
    }

private:
    int upTo(int highest) { return std::uniform_int_distribution(0, highest)(m_random); }
    bool isOnceIn(int times) { return upTo(times - 1) == 0; }
    template<typename List>
    auto anyOf(List const& list)
    {
        return *std::next(std::begin(list), upTo(static_cast<int>(std::size(list)) - 1));
    }

    // Among what is visible and enabled in the window that has the input.
    void userActs()
    {
        auto* const modal = QApplication::activeModalWidget();
        // The machine's files are none of the walk's.
        if (modal && modal->inherits("QFileDialog")) {
            modal->close();
            return;
        }
        // What ends the walk, or opens a window without a parent, has a role.
        auto* const command = anyOf(commands());
        if (!modal && isOnceIn(10) && command->menuRole() == QAction::TextHeuristicRole)
            return command->trigger();
        auto controls = (modal ? modal : &window)->findChildren<QWidget*>();
        erase_if(controls, [](QWidget const* widget) {
            bool const isControl = widget->focusPolicy() != Qt::NoFocus
                || qobject_cast<QAbstractButton const*>(widget);
            return !isControl || !widget->isVisible() || !widget->isEnabled();
        });
        if (!controls.isEmpty())
            touch(*anyOf(controls));
    }

    void touch(QWidget& control)
    {
        static QList const keys {Qt::Key_Space, Qt::Key_Return, Qt::Key_Escape, Qt::Key_Tab,
            Qt::Key_Up, Qt::Key_Down, Qt::Key_Left, Qt::Key_Right, Qt::Key_Backspace, Qt::Key_5};
        static QStringList const texts {
            "山田", "12,5", "nan", "👩‍👩‍👧🙂e\u0301", "a\tb\n"};
        auto const deed = upTo(4);
        if (deed > 1)
            QTest::mouseClick(&control, Qt::LeftButton);
        else if (deed == 1)
            QTest::keyClick(&control, anyOf(keys));
        else {
            QInputMethodEvent event;
            event.setCommitString(anyOf(texts));
            QApplication::sendEvent(&control, &event);
        }
    }

    void answerMenu()
    {
        auto* const menu = QApplication::activePopupWidget();
        if (!menu)
            return;
        for (int down = upTo(9); down >= 0; --down)
            QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, isOnceIn(4) ? Qt::Key_Escape : Qt::Key_Return);
        menu->close();
    }

    void lineActs()
    {
        auto& calls = port->calls;
        auto* const listener = port->delegate;
        auto const state = calls.empty() ? "close" : calls.back();
        if (state == "close") {
            ports.ports.assign(isOnceIn(5) ? 0U : 1U, port);
        } else if (state == "open" && isOnceIn(3)) {
            calls = {"close"};
            listener->serialPortDidEncounterError(std::make_shared<Error>("test", 1, "失敗"));
        } else if (state == "open") {
            calls = {"opened"};
            listener->serialPortWasOpened();
        } else if (isOnceIn(20)) {
            calls = {"close"};
            ++reached["loss"];
            port->playLoss();
        } else if (isOnceIn(100)) {
            for (int count = 0; count < 110; ++count)
                press({upTo(900) / 10.0, upTo(900) / 10.0});
        } else {
            static std::vector<std::string> const odd {
                "+inf5\n", "-nan0\n", "+1e91\n", "++++++", "+012", "\xff\xfe"};
            for (int record = upTo(8); record >= 0; --record)
                listener->serialPortDidReceiveData(
                    isOnceIn(5) ? anyOf(odd) : deviceRecord((upTo(1200) - 200) / 10.0));
        }
    }

    std::mt19937 m_random;
    QAction const& m_openPast {command("以前の測定を開く")};
};

} // namespace

TEST(RandomWalk, KeepsTheInvariants)
{
    constexpr unsigned seed = 6;
    Walk walk(seed);
    for (int step = 1; step <= 20'000; ++step) {
        walk.step();
        ASSERT_EQ(walk.brokenInvariant(), "") << "seed " << seed << ", step " << step;
    }
    for (auto const* what : {"loss", "preview", "full list", "three selected"})
        EXPECT_GT(walk.reached[what], 5) << what;
}
