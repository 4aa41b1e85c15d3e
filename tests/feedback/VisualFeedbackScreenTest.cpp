#include "feedback/GaugeView.h"
#include "feedback/GraphView.h"
#include "feedback/VisualFeedbackViewController.h"
#include "support/Session.h"
#include "toolkit/DesignFrame.h"
#include "toolkit/ImageView.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>
#include <optional>

using namespace tensio;

namespace {

struct LiveArea {
    Session session;
    QWidget view;
    std::optional<VisualFeedbackViewController> controller {
        std::in_place, session.manager, session.runLoop, view};

    LiveArea() { controller->viewWillAppear(); }

    void click(char const* name)
    {
        QTest::mouseClick(view.findChild<QPushButton*>(QString::fromLatin1(name)), Qt::LeftButton);
    }

    // The texts of the labels that the controller made for a column or a row of the screen.
    QStringList labels(std::function<bool(QRectF)> const& stands) const
    {
        QStringList texts;
        for (auto const* label : view.findChildren<QLabel*>()) {
            if (label->objectName().isEmpty() && stands(designFrame(*label)))
                texts << label->text();
        }
        return texts;
    }
    QStringList gaugeLabels() const
    {
        return labels([](QRectF frame) { return frame.x() < 76.0; });
    }
    QStringList graphLabels() const
    {
        return labels([](QRectF frame) { return frame.x() >= 76.0; });
    }

    Plotter& plotter() { return *view.findChild<GraphView*>()->plotter(); }
};

// Work takes time: a millisecond from one look at the clock to the next.
class SteppingRunLoop : public ManualRunLoop {
public:
    Seconds now() const override { return ManualRunLoop::now() + Seconds(++m_looks * 0.001); }

private:
    mutable int m_looks = 0;
};

class PaintCounter : public QObject {
public:
    explicit PaintCounter(QWidget& widget) { widget.installEventFilter(this); }

    int paints = 0;

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        paints += event->type() == QEvent::Paint ? 1 : 0;
        return QObject::eventFilter(watched, event);
    }
};

} // namespace

TEST(VisualFeedbackScreen, ScalesHaveANumberEveryFiveAndNoStaleOnes)
{
    LiveArea screen;
    EXPECT_EQ(screen.gaugeLabels().size(), 16);
    EXPECT_EQ(screen.graphLabels(),
        (QStringList {QStringLiteral("5"), QStringLiteral("10"), QStringLiteral("15"),
            QStringLiteral("20"), QStringLiteral("25"), QStringLiteral("30")}));
    for (int press = 0; press < 30; ++press) {
        screen.click("downButton");
        screen.click("rightButton");
    }
    EXPECT_EQ(screen.gaugeLabels(), (QStringList {QStringLiteral("5"), QStringLiteral("10")}));
    EXPECT_EQ(screen.graphLabels().size(), 12);
    screen.controller->viewWillAppear();
    EXPECT_EQ(screen.gaugeLabels().size(), 2);
    screen.click("upButton");
    screen.click("leftButton");
    EXPECT_EQ(screen.gaugeLabels().size(), 3);
    EXPECT_EQ(screen.graphLabels().size(), 11);

    auto const* top = screen.view.findChildren<QLabel*>().last();
    EXPECT_DOUBLE_EQ(designFrame(*top).center().x(), 164.0 + 524.0);
}

TEST(VisualFeedbackScreen, EveryReadingReachesTheTraceAndAConnectionClearsIt)
{
    LiveArea screen;
    screen.session.connect();
    screen.plotter().reset();
    screen.session.receive({1.0, -2.0, 50.0});
    EXPECT_EQ(screen.plotter().pressurePoints(), (std::vector {1.0f, 0.0f, 50.0f}));
    screen.click("upButton");
    screen.click("rightButton");
    EXPECT_EQ(screen.plotter().pointsPerScreen(), 700);
    screen.session.manager.shouldReset.setValue(false);
    EXPECT_EQ(screen.plotter().pressurePoints().size(), 3U);
    screen.session.manager.shouldReset.setValue(true);
    EXPECT_TRUE(screen.plotter().pressurePoints().empty());
}

TEST(VisualFeedbackScreen, PaintsOnceAFrameHoweverFastReadingsCome)
{
    struct Row {
        int recordsPerSecond;
        int fewestFrames;
        int mostFrames;
    };
    for (auto const& [recordsPerSecond, fewestFrames, mostFrames] :
        std::vector<Row> {{20, 20, 20}, {320, 50, 61}}) {
        LiveArea screen;
        screen.session.connect();
        screen.plotter().reset();
        screen.view.show();
        QCoreApplication::processEvents();
        PaintCounter gauge(*screen.view.findChild<GaugeView*>());
        PaintCounter graph(*screen.view.findChild<GraphView*>());
        for (int record = 0; record < 2 * recordsPerSecond; ++record) {
            screen.session.runLoop.advance(Seconds(1.0 / recordsPerSecond));
            screen.session.receive({10.0});
            QCoreApplication::processEvents();
        }
        EXPECT_EQ(std::ssize(screen.plotter().pressurePoints()), 2 * recordsPerSecond);
        for (auto const* counter : {&gauge, &graph}) {
            EXPECT_GE(counter->paints, 2 * fewestFrames) << recordsPerSecond;
            EXPECT_LE(counter->paints, 2 * mostFrames) << recordsPerSecond;
        }
    }
}

TEST(VisualFeedbackScreen, PaintsOnUntilAChangeIsWorkedOff)
{
    Session session;
    SteppingRunLoop runLoop;
    QWidget view;
    VisualFeedbackViewController controller(session.manager, runLoop, view);
    controller.viewWillAppear();
    auto& graph = *view.findChild<GraphView*>();
    for (int point = 0; point < 2000; ++point)
        graph.plotter()->addPressurePoint(static_cast<float>(point % 70));
    view.show();
    int frames = 0;
    do {
        runLoop.advance(Seconds(1.0 / 60.0));
        QCoreApplication::processEvents();
    } while (!graph.isSettled() && ++frames < 500);
    EXPECT_TRUE(graph.isSettled());
    EXPECT_GT(frames, 5);
}

TEST(VisualFeedbackScreen, TheMarkerBlinksWithTheModel)
{
    LiveArea screen;
    screen.session.connect();
    screen.session.receive({50.0});
    auto const* marker = screen.view.findChild<ImageView*>(QStringLiteral("targetPressureImage"));
    screen.session.runLoop.advance(Seconds(0.2));
    EXPECT_EQ(marker->picture().name(), QStringLiteral("gauge_target_on"));
    screen.session.receive({10.0});
    EXPECT_EQ(marker->picture().name(), QStringLiteral("gauge_target"));
}

TEST(VisualFeedbackScreen, TheLinesFollowABlinkThatEndsBetweenReadings)
{
    LiveArea screen;
    screen.session.connect();
    screen.view.show();
    screen.session.receive({50.0});
    screen.session.runLoop.advance(Seconds(0.25));
    QCoreApplication::processEvents();
    PaintCounter gauge(*screen.view.findChild<GaugeView*>());
    PaintCounter graph(*screen.view.findChild<GraphView*>());
    screen.session.manager.disconnectAction.apply(Nothing {});
    QCoreApplication::processEvents();
    EXPECT_EQ(gauge.paints, 1);
    EXPECT_EQ(graph.paints, 1);
}

TEST(VisualFeedbackScreen, MayGoInTheMiddleOfAStream)
{
    LiveArea screen;
    screen.session.connect();
    auto const destroying = screen.session.manager.maxPressure.observeChanges(
        [&](float) { screen.controller.reset(); });
    screen.session.receive({50.0, 60.0});
    screen.session.runLoop.advance(Seconds(1.0));
    screen.click("upButton");
    EXPECT_FALSE(screen.controller.has_value());
}
