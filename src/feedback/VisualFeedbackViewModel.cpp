#include "feedback/VisualFeedbackViewModel.h"

#include "core/TensioManager.h"
#include "reactive/combineLatest.h"
#include "toolkit/Color.h"

#include <algorithm>

namespace tensio {

namespace {

constexpr float step = 5.0f;

Action<float> stepWithin(MutableProperty<float>& property, float low, float high)
{
    return Action<float>([&property, low, high](float change) {
        return SignalProducer<Nothing>::completingAfter([&property, low, high, change] {
            property.setValue(std::clamp(property.value() + change, low, high));
        });
    });
}

} // namespace

VisualFeedbackViewModel::VisualFeedbackViewModel(TensioManager& tensioManager, RunLoop& runLoop)
    : model(runLoop, Picture::named(QStringLiteral("gauge_target")),
        Picture::named(QStringLiteral("gauge_target_on")),
        colorFromHexString(QStringLiteral("#e60012")), Qt::white)
    , m_changeUpperBoundPressure(
          stepWithin(upperBoundPressure, minUpperBoundPressure, maxUpperBoundPressure))
    , m_changeTimeWindow(stepWithin(timeWindow, minTimeWindow, maxTimeWindow))
    , cocoaActionIncUpperBoundPressure(m_changeUpperBoundPressure, step)
    , cocoaActionDecUpperBoundPressure(m_changeUpperBoundPressure, -step)
    , cocoaActionIncTimeWindow(m_changeTimeWindow, step)
    , cocoaActionDecTimeWindow(m_changeTimeWindow, -step)
{
    m_subscriptions.push_back(tensioManager.currentPressure.observeChanges(
        [this](float pressure) { updateCurrentPressure(pressure); }));
    m_subscriptions.push_back(maxPressure.bindTo(tensioManager.maxPressure));
    m_subscriptions.push_back(combineLatest<float, float>(tensioManager.targetPressurePercent,
        tensioManager.targetPressure,
        [this](float percent, float target) { targetPressure.setValue(target * percent); }));
    m_subscriptions.push_back(tensioManager.isMeasuring.observeChanges([this](bool measuring) {
        isMeasuring.setValue(measuring);
        if (!measuring)
            model.stopBlinking();
    }));
    m_subscriptions.push_back(shouldReset.bindTo(tensioManager.shouldReset));
}

bool VisualFeedbackViewModel::isTargetReached() const
{
    return currentPressure.value() > 0.0f && currentPressure.value() >= targetPressure.value();
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
