#include "core/TensioManager.h"

namespace tensio {

namespace {
constexpr Seconds clockInterval {1.0};
constexpr Seconds resetInterval {1.0};
} // namespace

TensioManager::TensioManager(SerialPortList& ports, RunLoop& runLoop, Clock const& clock,
    UserDefaults& userDefaults, SavingServices saving)
    : currentTime(clock.now())
    , serialPortManager(ports)
    , connectAction([this](Nothing) {
        return serialPortManager.connect()
            .onStarted([this] { connectionStarted(); })
            .onInterrupted([this] { stopMeasuring(); });
    })
    , disconnectAction([this](Nothing) {
        return SignalProducer<Nothing>::completingAfter([this] { stopMeasuring(); });
    })
    , changeTargetPressureAction([this](float step) {
        return SignalProducer<Nothing>::completingAfter([this, step] { stepTargetPressure(step); });
    })
    , changeTargetPressurePercentAction([this](float percent) {
        return SignalProducer<Nothing>::completingAfter(
            [this, percent] { targetPressurePercent.setValue(percent); });
    })
    , changeSliceStartingIndex([this](int step) {
        return SignalProducer<Nothing>::completingAfter([this, step] {
            measurementList.setStartingIndex(measurementList.startingIndex() + step);
        });
    })
    , saveCsvAction([this](Nothing) {
        return SignalProducer<Nothing>::completingAfter([this] { saveCsv(); });
    })
    , saveScreenshotAction([this](Nothing) {
        return SignalProducer<Nothing>::completingAfter([this] { saveScreenshot(); });
    })
    , m_runLoop(runLoop)
    , m_clock(clock)
    , m_userDefaults(userDefaults)
    , m_saving(saving)
{
    m_subscriptions.push_back(m_runLoop.scheduleRepeating(clockInterval, [this] { updateTime(); }));
    m_subscriptions.push_back(serialPortManager.pressure.observeChanges(
        [this](float pressure) { receivePressure(pressure); }));
    loadDefaultTargetPressure();
    m_subscriptions.push_back(measurementList.signal().observeValues(
        [this](Measurements const& slice) { sliceOfMeasurements.setValue(slice); }));
}

void TensioManager::updateTime()
{
    currentTime.setValue(m_clock.now());
}

void TensioManager::receivePressure(float pressure)
{
    if (!measurement)
        return;
    if (m_hasMeaningfulData == false && m_isTimerSetUp == false) {
        m_isTimerSetUp = true;
        m_resetTimer = m_runLoop.scheduleRepeating(resetInterval, [this] { onReset(); });
    }
    if (pressure > 0.0f)
        m_hasMeaningfulData = true;
    currentPressure.setValue(pressure > 0.0f ? pressure : 0.0f);
    if (pressure > maxPressure.value())
        maxPressure.setValue(pressure);
    measurement->pressurePoints->push_back(pressure);
    m_receivedData = true;
}

} // namespace tensio
