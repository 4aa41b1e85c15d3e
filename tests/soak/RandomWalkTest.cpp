#include "app/MainMenu.h"
#include "app/MainWindowController.h"
#include "feedback/GaugeView.h"
#include "feedback/GraphView.h"
#include "panels/HistorySlice.h"
#include "panels/UserInfoWindow.h"
#include "support/RandomUser.h"
#include "support/Session.h"
#include "toolkit/ImageView.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QMenu>

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

using namespace tensio;

namespace {

// The main window with all that happens around it: the user, the device, its cable, time.
class Walk {
public:
    explicit Walk(unsigned seed)
        : m_random(seed)
    {
        m_controller.setPrintMenu(m_mainMenu.printMenu());
        m_delegate.applicationDidFinishLaunching();
        // Small, so that painting it costs little.
        window().resize(260, 173);
        window().show();
        m_subscriptions.push_back(manager().shouldReset.observeChanges([this](bool) {
            m_shown = 0;
            ++connections;
        }));
        m_subscriptions.push_back(
            manager().currentPressure.observeChanges([this](float) { ++m_shown; }));
    }

    // What the walk must have come by to be worth anything.
    int connections = 0;
    int losses = 0;
    int refusals = 0;
    int choices = 0;
    int prints = 0;
    std::size_t mostMeasurements = 0;
    std::size_t mostCounted = 0;

    // What was done.
    QString step()
    {
        m_windowAlerts.answer = upTo(1) == 0 ? 0 : 1;
        m_session.saving.answer = upTo(1) == 0 ? std::optional<std::string>("/file") : std::nullopt;
        m_session.saving.diskIsFull = upTo(1) == 0;
        auto const turn = upTo(99);
        if (turn < 60)
            return m_user.act();
        if (turn < 85)
            return deviceActs();
        if (turn < 86)
            return resize();
        return timePasses();
    }

    QStringList brokenInvariants()
    {
        m_broken.clear();
        checkHistory();
        checkSession();
        checkPanels();
        checkMenus();
        checkLiveArea();
        return m_broken;
    }

private:
    enum class Line { Closed, Opening, Open };

    int upTo(int highest) { return std::uniform_int_distribution(0, highest)(m_random); }
    TensioManager& manager() { return m_session.manager; }
    MainWindow& window() { return m_controller.window(); }

    template<typename T>
    T& find(char const* name)
    {
        return *window().findChild<T*>(QString::fromLatin1(name));
    }

    QString timePasses()
    {
        Seconds const duration(upTo(30) * 0.1);
        m_session.runLoop.advance(duration);
        m_session.clock.date += std::chrono::duration_cast<Date::duration>(duration);
        QCoreApplication::processEvents();
        return QStringLiteral("%1 s pass").arg(duration.count());
    }

    QString resize()
    {
        window().resize(1 + upTo(400), 1 + upTo(300));
        return QStringLiteral("resize the window");
    }

    QString deviceActs()
    {
        followLine();
        auto* const listener = m_session.port->delegate;
        switch (m_line) {
        case Line::Closed:
            m_session.ports.ports.clear();
            if (upTo(4) != 0)
                m_session.ports.ports.push_back(m_session.port);
            return QStringLiteral("plug or unplug the closed device");
        case Line::Opening:
            if (upTo(2) == 0) {
                m_line = Line::Closed;
                ++refusals;
                listener->serialPortDidEncounterError(std::make_shared<Error>("test", 1, "失敗"));
                return QStringLiteral("refuse to open");
            }
            m_line = Line::Open;
            listener->serialPortWasOpened();
            return QStringLiteral("open");
        case Line::Open:
            break;
        }
        if (upTo(49) == 0) {
            m_line = Line::Closed;
            ++losses;
            m_session.port->playLoss();
            return QStringLiteral("lose the device");
        }
        return upTo(99) == 0 ? pressManyTimes() : sendBytes();
    }

    // What the session has asked of its port since the last look.
    void followLine()
    {
        for (auto const& call : std::exchange(m_session.port->calls, {})) {
            if (call == "open")
                m_line = Line::Opening;
            else if (call == "close")
                m_line = Line::Closed;
        }
    }

    QString pressManyTimes()
    {
        for (int press = 0; press < 110; ++press)
            m_session.press({upTo(900) / 10.0, upTo(900) / 10.0});
        return QStringLiteral("press 110 times");
    }

    QString sendBytes()
    {
        std::string bytes;
        for (int record = upTo(8); record >= 0; --record)
            bytes += upTo(4) == 0 ? brokenRecord() : deviceRecord((upTo(1200) - 200) / 10.0);
        m_session.port->delegate->serialPortDidReceiveData(bytes);
        return QStringLiteral("send ")
            % QString::fromLatin1(QByteArray::fromStdString(bytes).toHex());
    }

    std::string brokenRecord()
    {
        std::vector<std::string> const odd {"+inf5\n", "-nan0\n", "+1e91\n", "++++++",
            "\n\n\n\n\n\n", "+-990\n", "+012", "\xff\xfe\xfd\xfc\xfb\xfa", std::string(6, '\0'),
            "+あ\n\n"};
        return odd[static_cast<std::size_t>(upTo(static_cast<int>(odd.size()) - 1))];
    }

    void print(ReportKind kind)
    {
        ++prints;
        bool const mayPrint = hasReport(kind, manager()) && !manager().isMeasuring.value();
        m_emptyPrints += mayPrint ? 0 : 1;
    }

    void expect(bool holds, char const* invariant)
    {
        if (!holds)
            m_broken << QString::fromUtf8(invariant);
    }

    void checkHistory()
    {
        auto const& list = manager().measurementList;
        auto const& all = list.measurements();
        auto const first = list.startingIndex();
        mostMeasurements = std::max(mostMeasurements, all.size());
        expect(all.size() <= 99, "at most 99 measurements");
        expect(first >= 0 && first <= std::max<std::ptrdiff_t>(0, std::ssize(all) - 5),
            "the visible range lies within the list");
        expect(list.slice().size() == std::min<std::size_t>(5, all.size()), "five are visible");
        expect(list.slice() == manager().sliceOfMeasurements.value(), "the slice is published");
        for (std::size_t index = 0; index < all.size(); ++index) {
            auto const& each = *all[index];
            expect(each.number == static_cast<int>(index) + 1, "numbers run from 1");
            expect(
                each.bestPressure && each.targetPressure && each.timeStamp && each.pressurePoints,
                "what is listed is finished");
            auto const best = *each.bestPressure;
            expect(std::ranges::count(*each.pressurePoints, best) > 0
                    && std::ranges::none_of(
                        *each.pressurePoints, [best](float point) { return point > best; }),
                "the best pressure is the highest");
        }
        checkSelection(all, list.counted().size());
    }

    void checkSelection(Measurements const& all, std::size_t counted)
    {
        mostCounted = std::max(mostCounted, counted);
        expect(counted <= 3, "at most three are selected");
        expect(std::ranges::all_of(all,
                   [&](auto const& each) {
                       return each->isEnabled.value() == (counted < 3 || each->isCounted.value());
                   }),
            "once three are selected, only they can be touched");
        expect(counted == 0 || !manager().isMeasuring.value(), "no selection while measuring");
        expect(counted != 0 || manager().measurementList.selectedAverage.value() == 0.0f,
            "no average without a selection");
    }

    void checkSession()
    {
        auto const target = manager().targetPressure.value();
        expect(manager().currentPressure.value() >= 0.0f, "the pressure is not below 0");
        expect(manager().maxPressure.value() >= 0.0f, "the maximum is not below 0");
        expect(target == 0.0f || (target >= 10.0f && target <= 80.0f), "the target is in bounds");
        auto const percent = manager().targetPressurePercent.value();
        expect(percent >= 0.1f && percent <= 1.0f, "the factor is one of those offered");
        if (percent != 1.0f)
            ++choices;
        expect(manager().isMeasuring.value() == manager().connectAction.isExecuting(),
            "measuring is being connected");
        // The clock, the end of a burst, the blinking, two read-outs, the frame and a screenshot.
        expect(m_session.runLoop.liveTimers() <= 7, "no more timers than there are uses");
        auto const repeating = m_session.runLoop.repeatingTimers();
        expect(repeating <= (manager().isMeasuring.value() ? 3 : 1),
            "the clock, and in a session the end of a burst and the blinking");
    }

    void checkPanels()
    {
        bool const isMeasuring = manager().isMeasuring.value();
        expect(find<QAbstractButton>("startButton").isEnabled() == !isMeasuring, "start when idle");
        expect(find<QAbstractButton>("finishButton").isEnabled() == isMeasuring,
            "finish when measuring");
        expect(find<ImageView>("statusImageView").picture().name()
                == (isMeasuring ? QStringLiteral("ind_on") : QStringLiteral("ind_off")),
            "the lamp tells whether it is measuring");
        bool const canSave = find<QAbstractButton>("saveButton").isEnabled();
        expect(!(canSave && isMeasuring), "no saving while measuring");
        expect(!canSave || !manager().measurementList.measurements().empty(), "something to save");
        expect(find<QAbstractButton>("screenSaveButton").isEnabled() == canSave,
            "both save buttons alike");
        expect(window().findChildren<HistorySlice*>().size()
                == std::ssize(manager().sliceOfMeasurements.value()),
            "one tile for each visible measurement");
        checkDialog();
    }

    void checkMenus()
    {
        expect(m_emptyPrints == 0, "no printing of nothing, nor while measuring");
        expect(m_mainMenu.printMenu().actions().constFirst()->isEnabled()
                == find<QAbstractButton>("saveButton").isEnabled(),
            "printing and saving are allowed alike");
        auto const kept = manager().defaultTargetPressure.value();
        auto const& stored = m_session.userDefaults.stored;
        expect(stored.empty() || stored.at(TensioManager::defaultTargetPressureKey) == kept,
            "the default target is stored");
        auto const targets = m_defaultTargetMenu.actions();
        expect(std::ranges::all_of(targets,
                   [&](auto const* each) {
                       return each->isChecked() == (each->data().toFloat() == kept);
                   }),
            "the default target is the one marked");
    }

    void checkDialog()
    {
        auto const dialogs = window().findChildren<UserInfoWindow*>();
        bool const isOpen
            = std::ranges::any_of(dialogs, [](auto* each) { return each->isVisible(); });
        expect(dialogs.size() <= 1, "one dialog at most");
        expect(manager().isShowingPopup.value() == isOpen, "the session knows of the dialog");
        expect(find<QWidget>("coverView").isVisible() == isOpen, "dimmed while the dialog is open");
    }

    void checkLiveArea()
    {
        auto& gauge = *window().findChild<GaugeView*>();
        auto& graph = *window().findChild<GraphView*>();
        auto const upperBound = gauge.upperBoundPressure.value();
        auto const timeWindow = graph.timeWindow.value();
        auto const isStep = [](float value, float highest) {
            return value >= 10.0f && value <= highest && std::fmod(value, 5.0f) == 0.0f;
        };
        expect(isStep(upperBound, 100.0f), "the pressure scale is 10, 15 … 100");
        expect(isStep(timeWindow, 60.0f), "the time scale is 10, 15 … 60");
        expect(graph.upperBoundPressure.value() == upperBound, "gauge and graph have one scale");
        auto const labels = find<QWidget>("visualFeedbackView").findChildren<QLabel*>();
        expect(
            std::ranges::count_if(labels, [](auto* each) { return each->objectName().isEmpty(); })
                == static_cast<int>(upperBound / 5.0f + timeWindow / 5.0f),
            "a number every five along the scales");
        expect(
            graph.plotter()->pressurePoints().size() == m_shown, "every reading is in the trace");
        expect(manager().isMeasuring.value()
                || find<ImageView>("targetPressureImage").picture().name()
                    == QStringLiteral("gauge_target"),
            "blinks only while measuring");
    }

    std::mt19937 m_random;
    Session m_session;
    FakeAlerts m_windowAlerts;
    MainWindowController m_controller {m_session.manager, m_session.runLoop, m_windowAlerts};
    QMenu m_defaultTargetMenu;
    AppDelegate m_delegate {m_session.manager, m_session.runLoop, m_defaultTargetMenu,
        [this](ReportKind kind) { print(kind); }};
    MainMenu m_mainMenu {window(), m_defaultTargetMenu, m_delegate, m_session.manager};
    RandomUser m_user {m_random};
    int m_emptyPrints = 0;
    Line m_line = Line::Closed;
    std::size_t m_shown = 0;
    QStringList m_broken;
    Subscriptions m_subscriptions;
};

} // namespace

TEST(RandomWalk, NeverLeavesTheStatesThatThereAre)
{
    constexpr unsigned seed = 5;
    Walk walk(seed);
    QStringList lately;
    for (int step = 1; step <= 20'000; ++step) {
        lately << walk.step();
        if (lately.size() > 12)
            lately.removeFirst();
        auto const broken = walk.brokenInvariants();
        ASSERT_TRUE(broken.isEmpty())
            << "seed " << seed << ", step " << step
            << ": not so: " << broken.join(QStringLiteral(", ")).toStdString() << "\nafter:\n  "
            << lately.join(QStringLiteral("\n  ")).toStdString();
    }
    EXPECT_GT(walk.connections, 20);
    EXPECT_GT(walk.losses, 5);
    EXPECT_GT(walk.refusals, 5);
    EXPECT_GT(walk.choices, 0);
    EXPECT_GT(walk.prints, 20);
    EXPECT_EQ(walk.mostMeasurements, 99U);
    EXPECT_EQ(walk.mostCounted, 3U);
}
