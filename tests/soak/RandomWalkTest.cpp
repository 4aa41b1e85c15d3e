#include "support/Desk.h"

#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>
#include <random>

using namespace tensio;

namespace {

// The program with all that happens around it: the user, the device, its cable, the disk, time.
class Walk : public Desk {
public:
    std::map<std::string, int> reached;

    explicit Walk(unsigned seed)
        : m_random(seed)
    {
        window.setMinimumSize(0, 0);
        window.resize(260, 173);
    }

    void step()
    {
        alerts.answer = isOnceIn(2) ? 0 : 1;
        saving.answer = isOnceIn(2) ? std::optional<std::string>("/file") : std::nullopt;
        saving.diskIsFull = isOnceIn(2);
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

    void expectInvariants()
    {
        bool const isMeasuring = manager.isMeasuring.value();
        auto const count = manager.measurementList.measurements().size();
        auto const selected = manager.measurementList.counted().size();
        bool const hasResult = !isMeasuring && count > 0;
        EXPECT_LE(selected, isMeasuring ? 0U : 3U);
        EXPECT_EQ(manager.connectAction.isExecuting(), isMeasuring);
        // The clock, the archive, the end of a burst, the blinking, two read-outs, a frame and what
        // paces it, and a screenshot.
        EXPECT_LE(runLoop.liveTimers(), 9U);
        EXPECT_EQ(find(window, "startButton").isEnabled(), !isMeasuring);
        EXPECT_EQ(find(window, "finishButton").isEnabled(), isMeasuring);
        EXPECT_EQ(find(window, "saveButton").isEnabled(), hasResult);
        EXPECT_FALSE(isMeasuring && m_openPast.isEnabled());
        EXPECT_EQ(find<QWidget>(window, "coverView").isVisible(), manager.isShowingPopup.value());
        reached["full list"] += count == 99 ? 1 : 0;
        reached["three selected"] += selected == 3 ? 1 : 0;
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
            auto const* button = qobject_cast<QPushButton const*>(widget);
            // A menu has an event loop of its own.
            bool const hasMenu = button && button->menu();
            bool const isControl = widget->focusPolicy() != Qt::NoFocus || button;
            return !isControl || hasMenu || !widget->isVisible() || !widget->isEnabled();
        });
        static QList const keys {Qt::Key_Space, Qt::Key_Return, Qt::Key_Escape, Qt::Key_Tab,
            Qt::Key_Up, Qt::Key_Down, Qt::Key_Left, Qt::Key_Right, Qt::Key_Backspace, Qt::Key_5};
        if (controls.isEmpty())
            return;
        if (isOnceIn(2))
            QTest::keyClick(anyOf(controls), anyOf(keys));
        else
            QTest::mouseClick(anyOf(controls), Qt::LeftButton);
    }

    void lineActs()
    {
        auto& calls = port->calls;
        auto const state = calls.empty() ? "close" : calls.back();
        if (state == "close") {
            ports.ports.assign(isOnceIn(5) ? 0U : 1U, port);
        } else if (state == "open") {
            calls = {"opened"};
            port->delegate->serialPortWasOpened();
        } else if (isOnceIn(20)) {
            calls = {"close"};
            ++reached["loss"];
            port->playLoss();
        } else if (isOnceIn(100)) {
            for (int count = 0; count < 110; ++count)
                press({upTo(900) / 10.0, upTo(900) / 10.0});
        } else {
            receive({(upTo(1200) - 200) / 10.0});
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
        walk.expectInvariants();
        ASSERT_FALSE(HasFailure()) << "seed " << seed << ", step " << step;
    }
    for (auto const* what : {"loss", "full list", "three selected"})
        EXPECT_GT(walk.reached[what], 5) << what;
}
