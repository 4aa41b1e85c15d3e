#include "panels/InfoControlsViewModel.h"

#include "core/NumberText.h"
#include "core/TensioManager.h"
#include "reactive/combineLatest.h"
#include "reactive/throttle.h"

namespace tensio {

namespace {
constexpr auto step = TensioManager::targetPressureStep;
constexpr Seconds readOutInterval {0.5};
} // namespace

InfoControlsViewModel::InfoControlsViewModel(TensioManager const& tensioManager, RunLoop& runLoop)
    : cocoaActionIncTargetPressure(tensioManager.changeTargetPressureAction, step)
    , cocoaActionDecTargetPressure(tensioManager.changeTargetPressureAction, -step)
    , cocoaActionConnect(tensioManager.connectAction, Nothing {})
    , cocoaActionDisconnect(tensioManager.disconnectAction, Nothing {})
{
    m_subscriptions += targetPressure.bindTo(tensioManager.effectiveTarget);
    m_subscriptions += combineLatest(tensioManager.targetPressure,
        tensioManager.targetPressurePercent, [this](float target, float percent) {
            targetBasis.setValue(
                "基準 " + withUnit(target) + " × " + formatFixed(percent * 100.0f, 0) + "%");
        });
    m_subscriptions += throttle<float>(tensioManager.currentPressure, readOutInterval, runLoop,
        [this](float pressure) { currentPressure.setValue(pressure); });
    m_subscriptions += throttle<float>(tensioManager.maxPressure, readOutInterval, runLoop,
        [this](float pressure) { maxPressure.setValue(pressure); });
    m_subscriptions += isMeasuring.bindTo(tensioManager.isMeasuring);
    m_subscriptions += tensioManager.sliceOfMeasurements.observeChanges(
        [this](Measurements const& slice) { hasData.setValue(!slice.empty()); });
}

} // namespace tensio
