#include "feedback/VisualFeedbackModel.h"

#include "feedback/VisualFeedbackViewModel.h"
#include "support/Session.h"

#include <gtest/gtest.h>

using namespace tensio;

namespace {

struct Blinking {
    ManualRunLoop runLoop;
    VisualFeedbackModel model {runLoop, Picture::named(QStringLiteral("gauge_target")),
        Picture::named(QStringLiteral("gauge_target_on")), Qt::red, Qt::white};

    bool isUsual() const
    {
        bool const isUsualImage
            = model.targetImage.value().name() == QStringLiteral("gauge_target");
        EXPECT_EQ(isUsualImage, model.targetColor.value() == QColor(Qt::red));
        return isUsualImage;
    }
};

} // namespace

TEST(VisualFeedbackModel, ShowsTheAlternativePairFirstAndChangesEveryFifthOfASecond)
{
    Blinking blinking;
    blinking.model.startBlinking();
    std::string phases;
    for (int tick = 0; tick < 5; ++tick) {
        phases += blinking.isUsual() ? 'u' : 'a';
        blinking.runLoop.advance(Seconds(0.2));
        blinking.model.startBlinking();
    }
    EXPECT_EQ(phases, "uauau");
    EXPECT_EQ(blinking.runLoop.liveTimers(), 1U);
    EXPECT_FALSE(blinking.isUsual());
    blinking.model.stopBlinking();
    EXPECT_TRUE(blinking.isUsual());
    EXPECT_EQ(blinking.runLoop.liveTimers(), 0U);
    blinking.model.startBlinking();
    blinking.runLoop.advance(Seconds(0.2));
    EXPECT_FALSE(blinking.isUsual());
}

TEST(VisualFeedbackModel, StoppingAtRestTellsNobody)
{
    Blinking blinking;
    auto const observing
        = blinking.model.targetColor.observeChanges([](QColor const&) { ADD_FAILURE(); });
    blinking.model.stopBlinking();
}

namespace {

struct Live {
    Session session;
    VisualFeedbackViewModel viewModel {session.manager, session.runLoop};

    bool isBlinking() const { return session.runLoop.liveTimers() > 1; }

    // The clock's timer, the reset timer of the burst, the blink timer.
    bool blinksAt(double pressure)
    {
        auto const before = session.runLoop.liveTimers();
        session.manager.currentPressure.setValue(static_cast<float>(pressure));
        bool const blinks = session.runLoop.liveTimers() > before;
        viewModel.model.stopBlinking();
        return blinks;
    }
};

} // namespace

TEST(VisualFeedbackViewModel, BlinksWhileThePressureIsAboveZeroAndAtTheEffectiveTarget)
{
    Live live;
    live.session.manager.targetPressure.setValue(40.0f);
    live.session.manager.targetPressurePercent.setValue(0.8f);
    EXPECT_EQ(live.viewModel.targetPressure.value(), 32.0f);
    EXPECT_TRUE(live.blinksAt(32.0));
    EXPECT_FALSE(live.blinksAt(31.9));
    live.session.manager.targetPressure.setValue(0.0f);
    EXPECT_FALSE(live.blinksAt(0.0));
    EXPECT_TRUE(live.blinksAt(0.1));
}

TEST(VisualFeedbackViewModel, StopsBlinkingWhenTheSessionEndsButNotWhenTheTargetMoves)
{
    Live live;
    live.session.manager.currentPressure.setValue(50.0f);
    live.session.manager.targetPressure.setValue(80.0f);
    EXPECT_TRUE(live.isBlinking());
    live.session.manager.isMeasuring.setValue(true);
    EXPECT_TRUE(live.isBlinking());
    live.session.manager.isMeasuring.setValue(false);
    EXPECT_FALSE(live.isBlinking());
}

TEST(VisualFeedbackViewModel, StepsTheScalesWithinTheirBoundsAndTellsOfEveryPress)
{
    Live live;
    std::vector<float> bounds;
    std::vector<float> windows;
    auto const observing
        = live.viewModel.upperBoundPressure.observeChanges([&](float u) { bounds.push_back(u); });
    auto const observingToo
        = live.viewModel.timeWindow.observeChanges([&](float t) { windows.push_back(t); });
    for (int press = 0; press < 5; ++press)
        live.viewModel.cocoaActionIncUpperBoundPressure.execute();
    for (int press = 0; press < 6; ++press)
        live.viewModel.cocoaActionDecTimeWindow.execute();
    live.viewModel.cocoaActionDecUpperBoundPressure.execute();
    live.viewModel.cocoaActionIncTimeWindow.execute();
    EXPECT_EQ(bounds, (std::vector {85.0f, 90.0f, 95.0f, 100.0f, 100.0f, 95.0f}));
    EXPECT_EQ(windows, (std::vector {25.0f, 20.0f, 15.0f, 10.0f, 10.0f, 10.0f, 15.0f}));
}
