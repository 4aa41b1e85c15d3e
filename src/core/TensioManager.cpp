#include "core/TensioManager.h"

#include "core/NumberText.h"
#include "core/StoredMeasurements.h"
#include "platform/Menu.h"
#include "platform/SessionStore.h"
#include "reactive/combineLatest.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tensio {

namespace {
constexpr Seconds clockInterval {1.0};
constexpr Seconds resetInterval {1.0};

constexpr float fallbackTargetPressure = 30.0f;
constexpr float offeredStep = 5.0f;

struct ReadOuts {
    float current = 0.0f;
    float maximum = 0.0f;
    float target = 0.0f;
};

// As the end of the session left them.
ReadOuts readOutsOf(StoredSession const& session)
{
    ReadOuts readOuts {0.0f, 0.0f, session.target};
    if (session.measurements.empty())
        return readOuts;
    auto const& last = session.measurements.back();
    if (!last.points.empty() && last.points.back() > 0.0f)
        readOuts.current = last.points.back();
    // Only the silence after a press puts the maximum back to 0.
    if (session.end && *session.end <= last.timeStamp)
        readOuts.maximum = last.best;
    if (!session.end && last.target != session.target * session.targetPercent)
        readOuts.target = last.target / session.targetPercent;
    return readOuts;
}

void publish(auto const&... properties)
{
    (properties.publish(), ...);
}
} // namespace

TensioManager::TensioManager(SerialPortList& ports, RunLoop& runLoop, Clock const& clock,
    UserDefaults& userDefaults, SavingServices saving)
    : currentTime(clock.now())
    , serialPortManager(ports)
    , connectAction([this](Nothing) {
        return SignalProducer<Nothing, ErrorRef>([this](auto const& observer) {
            connectionStarted();
            serialPortManager.connect().start([this, observer](auto const& event) {
                if (std::holds_alternative<InterruptedEvent>(event))
                    stopMeasuring();
                observer.send(event);
            });
        });
    })
    , disconnectAction([this](Nothing) { stopMeasuring(); })
    , changeTargetPressureAction([this](float step) { stepTargetPressure(step); })
    , changeTargetPressurePercentAction([this](float percent) {
        m_ownPercent.reset();
        targetPressurePercent.setValue(percent);
    })
    , changeSliceStartingIndex([this](int step) {
        measurementList.setStartingIndex(measurementList.startingIndex() + step);
    })
    , saveCsvAction([this](Nothing) { saveCsv(); })
    , saveScreenshotAction([this](Nothing) { saveScreenshot(); })
    , m_runLoop(runLoop)
    , m_clock(clock)
    , m_userDefaults(userDefaults)
    , m_saver(username, measurementList, saving)
{
    m_subscriptions += combineLatest(targetPressure, targetPressurePercent,
        [this](float target, float percent) { effectiveTarget.setValue(target * percent); });
    m_subscriptions += m_runLoop.scheduleRepeating(clockInterval, [this] { updateTime(); });
    m_subscriptions += serialPortManager.pressure.observeChanges(
        [this](float pressure) { receivePressure(pressure); });
    loadDefaultTargetPressure();
    m_subscriptions += measurementList.signal().observeValues(
        [this](Measurements const& slice) { sliceOfMeasurements.setValue(slice); });
}

void TensioManager::connectionStarted()
{
    m_measurementCount = 1;
    measurement = std::make_shared<Measurement>(m_measurementCount);
    isSavedAsCsv.prepare(false);
    m_saver.savedPath.prepare({});
    measurementList.reset();
    publish(isSavedAsCsv, savedPath());
    isRecording.setValue(false);
    isMeasuring.setValue(true);
    m_hasMeaningfulData = false;
    m_receivedData = false;
    m_isTimerSetUp = false;
    if (auto const percent = std::exchange(m_ownPercent, std::nullopt))
        targetPressurePercent.setValue(*percent);
    currentPressure.setValue(0.0f);
    targetPressure.setValue(0.0f);
    maxPressure.setValue(0.0f);
    shouldReset.setValue(true);
}

void TensioManager::restoreSession(StoredSession const& session)
{
    auto const readOuts = readOutsOf(session);
    currentPressure.prepare(readOuts.current);
    maxPressure.prepare(readOuts.maximum);
    targetPressure.prepare(readOuts.target);
    m_ownPercent = nextTargetPressurePercent();
    targetPressurePercent.prepare(session.targetPercent);
    effectiveTarget.prepare(readOuts.target * session.targetPercent);
    shouldReset.prepare(true);
    username.prepare(session.summary.name);
    serialPortManager.isSimulated.prepare(session.summary.isSimulated);
    isSavedAsCsv.prepare(false);
    m_saver.savedPath.prepare({});
    measurementList.assign(measurementsOf(session));
    // Header and notices look at the list when isMeasuring is published.
    publish(currentPressure, maxPressure, targetPressure, targetPressurePercent, shouldReset,
        username, serialPortManager.isSimulated, isSavedAsCsv, savedPath(), isMeasuring);
}

void TensioManager::receivePressure(float pressure)
{
    if (!measurement)
        return;
    if (m_hasMeaningfulData == false && m_isTimerSetUp == false) {
        m_isTimerSetUp = true;
        m_resetTimer = m_runLoop.scheduleRepeating(resetInterval, [this] { onReset(); });
        isRecording.setValue(true);
    }
    if (pressure > 0.0f)
        m_hasMeaningfulData = true;
    currentPressure.setValue(pressure > 0.0f ? pressure : 0.0f);
    if (pressure > maxPressure.value())
        maxPressure.setValue(pressure);
    measurement->pressurePoints->push_back(pressure);
    m_receivedData = true;
}

void TensioManager::onReset()
{
    if (m_receivedData == false) {
        m_resetTimer.end();
        m_isTimerSetUp = false;
        isRecording.setValue(false);
        if (m_hasMeaningfulData == true) {
            m_hasMeaningfulData = false;
            finishMeasurement();
            maxPressure.setValue(0.0f);
        }
    }
    m_receivedData = false;
}

void TensioManager::finishMeasurement()
{
    measurement->targetPressure = effectiveTarget.value();
    measurement->bestPressure = maxPressure.value();
    measurement->timeStamp = m_clock.now();
    measurementList.add(measurement);
    ++m_measurementCount;
    measurement = std::make_shared<Measurement>(m_measurementCount);
}

void TensioManager::stopMeasuring()
{
    if (m_hasMeaningfulData == true) {
        finishMeasurement();
        m_hasMeaningfulData = false;
    }
    isRecording.setValue(false);
    isMeasuring.setValue(false);
    serialPortManager.disconnect();
    m_resetTimer.end();
}

void TensioManager::stepTargetPressure(float step)
{
    // Stepping from the rounded value keeps the effective target on the grid of 0.1 that the user
    // sees.
    auto const shown = std::round(effectiveTarget.value() * 10.0f) / 10.0f;
    auto const stepped = (shown + step) * (1.0f / targetPressurePercent.value());
    targetPressure.setValue(std::clamp(stepped, minTargetPressure, maxTargetPressure));
}

void TensioManager::loadDefaultTargetPressure()
{
    auto const stored = m_userDefaults.floatForKey(defaultTargetPressureKey);
    defaultTargetPressure.setValue(stored > 0.0f ? stored : fallbackTargetPressure);
    m_subscriptions += defaultTargetPressure.observeChanges([this](float target) {
        m_userDefaults.setFloat(defaultTargetPressureKey, target);
        m_userDefaults.synchronize();
    });
}

void TensioManager::saveCsv()
{
    if (m_saver.saveCsv())
        isSavedAsCsv.setValue(true);
}

void TensioManager::setUpTargetPressureMenu(Menu& menu)
{
    m_targetPressureMenu = &menu;
    menu.removeAllItems();
    for (auto value = maxTargetPressure; value >= minTargetPressure; value -= offeredStep) {
        auto const target = static_cast<int>(value);
        menu.addItem({withUnit(value), target, defaultTargetPressure.value() == value,
            [this, target] { setTargetPressure(target); }});
    }
}

void TensioManager::setTargetPressure(int tag)
{
    defaultTargetPressure.setValue(static_cast<float>(tag));
    if (m_targetPressureMenu)
        m_targetPressureMenu->checkOnly(tag);
}

} // namespace tensio
