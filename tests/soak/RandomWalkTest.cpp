#include "soak/RandomUser.h"
#include "support/Desk.h"

#include <QPrintPreviewWidget>

#include <algorithm>
#include <gtest/gtest.h>

using namespace tensio;

namespace {

// The program with all that happens around it: the user, the device, its cable, the disk, time.
class Walk : Desk {
public:
    // What the walk must have reached to be worth anything.
    int connections = 0;
    int losses = 0;
    int refusals = 0;
    int prints = 0;
    std::size_t mostMeasurements = 0;
    std::size_t mostCounted = 0;

    explicit Walk(unsigned seed)
        : m_random(seed)
    {
        // Small, so that painting it costs little.
        window.setMinimumSize(0, 0);
        window.resize(260, 173);
        m_observing = manager.shouldReset.observeChanges([this](bool) { ++connections; });
    }

    // What was done.
    QString step()
    {
        alerts.answer = upTo(1) == 0 ? 0 : 1;
        saving.answer = upTo(1) == 0 ? std::optional<std::string>("/file") : std::nullopt;
        saving.diskIsFull = upTo(1) == 0;
        store.refusals = upTo(49) == 0 ? 2 : store.refusals;
        auto const turn = upTo(99);
        if (turn < 60)
            return m_user.act();
        if (turn < 85)
            return deviceActs();
        if (turn < 86)
            window.resize(1 + upTo(400), 1 + upTo(300));
        runLoop.advance(Seconds(upTo(30) * 0.1));
        QCoreApplication::processEvents();
        return QStringLiteral("time passes");
    }

    std::string brokenInvariant()
    {
        m_broken.clear();
        checkHistory();
        checkSession();
        return m_broken;
    }

private:
    enum class Line { Closed, Opening, Open };

    int upTo(int highest) { return std::uniform_int_distribution(0, highest)(m_random); }
    QWidget const& view(char const* name) const { return find<QWidget>(window, name); }

    QString deviceActs()
    {
        // What the session has asked of its port since the last time.
        for (auto const& call : std::exchange(port->calls, {})) {
            if (call == "open" || call == "close")
                m_line = call == "open" ? Line::Opening : Line::Closed;
        }
        auto* const listener = port->delegate;
        if (m_line == Line::Closed) {
            ports.ports.clear();
            if (upTo(4) != 0)
                ports.ports.push_back(port);
            return QStringLiteral("plug or unplug the closed device");
        }
        if (m_line == Line::Opening) {
            bool const isRefused = upTo(2) == 0;
            m_line = isRefused ? Line::Closed : Line::Open;
            refusals += isRefused ? 1 : 0;
            if (isRefused)
                listener->serialPortDidEncounterError(std::make_shared<Error>("test", 1, "失敗"));
            else
                listener->serialPortWasOpened();
            return isRefused ? QStringLiteral("refuse to open") : QStringLiteral("open");
        }
        if (upTo(49) == 0) {
            m_line = Line::Closed;
            ++losses;
            port->playLoss();
            return QStringLiteral("lose the device");
        }
        if (upTo(99) == 0) {
            for (int count = 0; count < 110; ++count)
                press({upTo(900) / 10.0, upTo(900) / 10.0});
            return QStringLiteral("press 110 times");
        }
        std::vector<std::string> const odd {
            "+inf5\n", "-nan0\n", "+1e91\n", "++++++", "+012", "\xff\xfe"};
        std::string bytes;
        for (int record = upTo(8); record >= 0; --record)
            bytes += upTo(4) == 0 ? odd[static_cast<std::size_t>(upTo(5))]
                                  : deviceRecord((upTo(1200) - 200) / 10.0);
        listener->serialPortDidReceiveData(bytes);
        return QStringLiteral("send ")
            + QString::fromLatin1(QByteArray::fromStdString(bytes).toHex());
    }

    void expect(bool holds, char const* invariant)
    {
        if (!holds)
            m_broken += invariant + std::string("; ");
    }

    void checkHistory()
    {
        auto const& list = manager.measurementList;
        auto const& all = list.measurements();
        auto const first = list.startingIndex();
        auto const counted = list.counted().size();
        mostMeasurements = std::max(mostMeasurements, all.size());
        mostCounted = std::max(mostCounted, counted);
        expect(all.size() <= 99, "at most 99 measurements");
        expect(first >= 0 && first <= std::max<std::ptrdiff_t>(0, std::ssize(all) - 5),
            "the visible range lies within the list");
        expect(list.slice() == manager.sliceOfMeasurements.value(), "the slice is published");
        expect(counted <= 3, "at most three are selected");
        expect(counted == 0 || !manager.isMeasuring.value(), "no selection while measuring");
        int number = 1;
        for (auto const& each : all) {
            expect(each->number == number++, "numbers run from 1");
            expect(std::ranges::count(*each->pressurePoints, *each->bestPressure) > 0,
                "the best pressure is one of the points");
            expect(each->isEnabled.value() == (counted < 3 || each->isCounted.value()),
                "once three are selected, only they can be touched");
        }
    }

    void checkSession()
    {
        bool const isMeasuring = manager.isMeasuring.value();
        auto const target = manager.targetPressure.value();
        expect(manager.currentPressure.value() >= 0.0f, "the pressure is not below 0");
        expect(target == 0.0f || (target >= 10.0f && target <= 80.0f), "the target is in bounds");
        expect(isMeasuring == manager.connectAction.isExecuting(), "measuring is being connected");
        // The clock, the recorder, the end of a burst, the blinking, two read-outs, a frame and
        // what paces it, and a screenshot.
        expect(runLoop.liveTimers() <= 9, "no more timers than there are uses");
        expect(runLoop.repeatingTimers() <= (isMeasuring ? 4 : 2),
            "the clock and the recorder, and in a session the end of a burst and the blinking");
        expect(view("startButton").isEnabled() == !isMeasuring, "start when idle");
        expect(view("finishButton").isEnabled() == isMeasuring, "finish when measuring");
        expect(view("saveButton").isEnabled()
                == (!isMeasuring && !manager.measurementList.measurements().empty()),
            "saving when there is something and nothing is measured");
        bool const isPreview = window.findChild<QPrintPreviewWidget*>();
        prints += isPreview && !m_wasPreview ? 1 : 0;
        m_wasPreview = isPreview;
        expect(!isPreview || (!isMeasuring && !manager.measurementList.measurements().empty()),
            "no printing of nothing, nor while measuring");
        expect(!isMeasuring || !m_openPast.isEnabled(), "no opening while measuring");
        expect(isSleepInhibited == isMeasuring, "the screen stays on while measuring");
        expect(manager.isShowingPopup.value() == view("coverView").isVisible(),
            "dimmed while the dialog is open");
    }

    std::mt19937 m_random;
    QAction const& m_openPast {*commands(QStringLiteral("以前の測定を開く")).value(0)};
    RandomUser m_user {m_random};
    bool m_wasPreview = false;
    Line m_line = Line::Closed;
    std::string m_broken;
    Subscription m_observing;
};

} // namespace

TEST(RandomWalk, KeepsTheInvariants)
{
    constexpr unsigned seed = 5;
    Walk walk(seed);
    QStringList lately;
    for (int step = 1; step <= 20'000; ++step) {
        lately << walk.step();
        if (lately.size() > 12)
            lately.removeFirst();
        ASSERT_EQ(walk.brokenInvariant(), "")
            << "seed " << seed << ", step " << step << ", after:\n  "
            << lately.join(QStringLiteral("\n  ")).toStdString();
    }
    EXPECT_GT(walk.connections, 20);
    EXPECT_GT(walk.losses, 5);
    EXPECT_GT(walk.refusals, 5);
    EXPECT_GT(walk.prints, 20);
    EXPECT_EQ(walk.mostMeasurements, 99U);
    EXPECT_EQ(walk.mostCounted, 3U);
}
