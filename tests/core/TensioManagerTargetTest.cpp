#include "support/Session.h"

#include <gtest/gtest.h>

using namespace tensio;

TEST(TensioManagerTarget, StepsStayOnTheGridThatTheUserSees)
{
    std::tuple<float, float, float, float> const rows[] {{30.0f, 1.0f, 0.1f, 30.1f},
        {10.0f, 1.0f, -0.1f, 10.0f}, {80.0f, 1.0f, 0.1f, 80.0f}, {33.3f, 0.7f, 0.1f, 23.4f / 0.7f},
        {40.0f, 0.5f, -0.1f, 39.8f}, {80.0f, 0.5f, 0.1f, 80.0f}, {0.0f, 1.0f, 0.1f, 10.0f}};
    for (auto const& [base, percent, step, result] : rows) {
        Session session;
        session.manager.targetPressure.setValue(base);
        session.manager.changeTargetPressurePercentAction.apply(percent);
        session.manager.changeTargetPressureAction.apply(step);
        EXPECT_FLOAT_EQ(session.manager.targetPressure.value(), result)
            << base << " × " << percent << " + " << step;
    }
}

TEST(TensioManagerTarget, OffersFifteenDefaultsAndStoresAndChecksTheChosenOne)
{
    Session session({{"target pressure", 32.5f}});
    EXPECT_EQ(session.manager.defaultTargetPressure.value(), 32.5f);
    EXPECT_EQ(session.userDefaults.synchronizations, 0) << "loading writes nothing";
    FakeMenu menu;
    menu.addItem({});
    session.manager.setUpTargetPressureMenu(menu);
    ASSERT_EQ(menu.items.size(), 15U);
    EXPECT_EQ(menu.items.front().title + menu.checkedTitles(), "80.0 kPa");
    EXPECT_EQ(menu.items.back().title, "10.0 kPa");
    session.manager.targetPressure.setValue(20.0f);
    menu.items[5].action();
    EXPECT_EQ(menu.checkedTitles(), "55.0 kPa");
    EXPECT_EQ(session.userDefaults.stored["target pressure"], 55.0f);
    EXPECT_EQ(session.userDefaults.synchronizations, 1);
    EXPECT_EQ(session.manager.targetPressure.value(), 20.0f);
    session.manager.setUpTargetPressureMenu(menu);
    EXPECT_EQ(menu.checkedTitles(), "55.0 kPa");
}
