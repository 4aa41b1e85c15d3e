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
