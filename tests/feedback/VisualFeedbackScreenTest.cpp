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

} // namespace

TEST(VisualFeedbackScreen, ScalesHaveANumberEveryFiveAndNoStaleOnes)
{
    LiveArea screen;
    EXPECT_EQ(screen.gaugeLabels().size(), 16);
    EXPECT_EQ(screen.graphLabels(),
        (QStringList {u"5"_qs, u"10"_qs, u"15"_qs, u"20"_qs, u"25"_qs, u"30"_qs}));
    for (int press = 0; press < 30; ++press) {
        screen.click("downButton");
        screen.click("rightButton");
    }
    EXPECT_EQ(screen.gaugeLabels(), (QStringList {u"5"_qs, u"10"_qs}));
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
