#include "feedback/VisualFeedbackViewModel.h"

#include "core/TensioManager.h"
#include "toolkit/Colors.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tensio {

namespace {

CocoaAction stepBy(float difference, MutableProperty<float>& property, float low, float high)
{
    Action<float> const step([&property, low, high](float change) {
        property.setValue(std::clamp(property.value() + change, low, high));
    });
    return {step, difference};
}

} // namespace

VisualFeedbackViewModel::VisualFeedbackViewModel(
    TensioManager const& tensioManager, RunLoop& runLoop)
    : model(runLoop, Picture::named(u"gauge_target"_s), Picture::named(u"gauge_target_on"_s),
        colorFromHexString(u"#e60012"_s), Qt::white)
    , cocoaActionIncUpperBoundPressure(
          stepBy(5.0f, upperBoundPressure, minUpperBoundPressure, maxUpperBoundPressure))
    , cocoaActionDecUpperBoundPressure(
          stepBy(-5.0f, upperBoundPressure, minUpperBoundPressure, maxUpperBoundPressure))
    , cocoaActionIncTimeWindow(stepBy(5.0f, timeWindow, minTimeWindow, maxTimeWindow))
    , cocoaActionDecTimeWindow(stepBy(-5.0f, timeWindow, minTimeWindow, maxTimeWindow))
    , m_measurementList(tensioManager.measurementList)
{
    m_subscriptions += tensioManager.currentPressure.observeChanges(
        [this](float pressure) { updateCurrentPressure(pressure); });
    m_subscriptions += maxPressure.bindTo(tensioManager.maxPressure);
    m_subscriptions += targetPressure.bindTo(tensioManager.effectiveTarget);
    m_subscriptions += tensioManager.isMeasuring.observeChanges([this](bool measuring) {
        isMeasuring.setValue(measuring);
        if (!measuring)
            model.stopBlinking();
    });
    m_subscriptions += shouldReset.bindTo(tensioManager.shouldReset);
}

bool VisualFeedbackViewModel::isTargetReached() const
{
    return currentPressure.value() > 0.0f && currentPressure.value() >= targetPressure.value();
}

std::vector<float> VisualFeedbackViewModel::pointsAfterReset() const
{
    std::vector<float> points;
    for (auto const& measurement : m_measurementList.measurements())
        std::ranges::transform(*measurement->pressurePoints, std::back_inserter(points),
            [](float pressure) { return pressure > 0.0f ? pressure : 0.0f; });
    return points;
}

void VisualFeedbackViewModel::updateCurrentPressure(float pressure)
{
    currentPressure.setValue(pressure);
    if (isTargetReached())
        model.startBlinking();
    else
        model.stopBlinking();
}

} // namespace tensio
