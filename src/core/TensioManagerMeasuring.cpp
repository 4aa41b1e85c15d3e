#include "core/TensioManager.h"

// Where connections and measurements begin and end.

namespace tensio {

void TensioManager::connectionStarted()
{
    m_measurementCount = 1;
    measurement = std::make_shared<Measurement>(m_measurementCount);
    measurementList.reset();
    isMeasuring.setValue(true);
    m_hasMeaningfulData = false;
    m_receivedData = false;
    m_isTimerSetUp = false;
    currentPressure.setValue(0.0f);
    targetPressure.setValue(0.0f);
    maxPressure.setValue(0.0f);
    shouldReset.setValue(true);
}

void TensioManager::onReset()
{
    if (m_receivedData == false) {
        m_resetTimer.end();
        m_isTimerSetUp = false;
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
    measurement->targetPressure = targetPressure.value() * targetPressurePercent.value();
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
    isMeasuring.setValue(false);
    serialPortManager.disconnect();
    m_resetTimer.end();
}

} // namespace tensio
