#pragma once

#include "core/MeasurementList.h"
#include "core/ResultSaver.h"
#include "core/SerialPortManager.h"
#include "platform/Clock.h"
#include "platform/RunLoop.h"
#include "platform/UserDefaults.h"
#include "reactive/Action.h"

#include <memory>
#include <optional>
#include <string>

namespace tensio {

class Menu;
struct StoredSession;

// The session manager: owns the link and the list of measurements, publishes the live values, cuts
// the stream of pressures into measurements, keeps the target, and offers the commands of the user
// interface. The program has one and passes it by reference. Pressures in kPa.
class TensioManager {
public:
    // Bounds of the base target, and what a step changes.
    static constexpr float minTargetPressure = 10.0f;
    static constexpr float maxTargetPressure = 80.0f;
    static constexpr float targetPressureStep = 0.1f;
    static constexpr auto defaultTargetPressureKey = "target pressure";

    TensioManager(SerialPortList& ports, RunLoop& runLoop, Clock const& clock,
        UserDefaults& userDefaults, SavingServices saving);

    MutableProperty<Date> currentTime;
    MutableProperty<std::string> username {{}};
    // 1.0 stands for 100 %.
    MutableProperty<float> targetPressurePercent {1.0f};
    // The base target.
    MutableProperty<float> targetPressure {0.0f};
    // The base target times the percentage; follows both.
    MutableProperty<float> effectiveTarget {0.0f};
    // What a new subject starts with.
    MutableProperty<float> defaultTargetPressure {0.0f};
    // Never below 0.
    MutableProperty<float> currentPressure {0.0f};
    MutableProperty<float> maxPressure {0.0f};
    MutableProperty<bool> isMeasuring {false};
    // Records are coming: from the first one until a tick of the reset timer that finds none, or
    // the end of the connection.
    MutableProperty<bool> isRecording {false};
    // Assigned true when the graph must be cleared: at each connection start and when a stored
    // session is put into the window.
    MutableProperty<bool> shouldReset {false};
    // The user information dialog is open.
    MutableProperty<bool> isShowingPopup {false};
    MutableProperty<Measurements> sliceOfMeasurements {{}};
    // A CSV file holds all measurements of the list. Published at each such save as well.
    MutableProperty<bool> isSavedAsCsv {false};

    MeasurementList measurementList;
    // The one being recorded, replaced whenever one is finished; none before the first connection.
    std::shared_ptr<Measurement> measurement;
    SerialPortManager serialPortManager;

    // Executes for the whole connection. Value: the port is open. Failure: it did not open; the
    // error has the text for the user. Interruption: the connection is lost. Completion: the user
    // finished.
    Action<Nothing, Nothing, ErrorRef> connectAction;
    Action<Nothing> disconnectAction;
    // Steps the effective target by that much.
    Action<float> changeTargetPressureAction;
    // Sets targetPressurePercent; 0.8 is 80 %.
    Action<float> changeTargetPressurePercentAction;
    // Scrolls the history by that many measurements.
    Action<int> changeSliceStartingIndex;
    Action<Nothing> saveCsvAction;
    Action<Nothing> saveScreenshotAction;

    // What the next subject starts with: not the percentage of a restored session.
    float nextTargetPressurePercent() const
    {
        return m_ownPercent.value_or(targetPressurePercent.value());
    }

    // The tick of the clock, once a second.
    void updateTime() { currentTime.setValue(m_clock.now()); }
    // The tick of the reset timer: finishes the measurement if no record came since the last tick.
    void onReset();

    // Puts a finished session into the window, with all values as they were when it had just been
    // finished; only while none runs. Nothing is published before all of it is assigned.
    void restoreSession(StoredSession const& session);

    // Fills the menu of default targets, and keeps it for setTargetPressure().
    void setUpTargetPressureMenu(Menu& menu);
    // Chooses the default target; the tag is its value in kPa.
    void setTargetPressure(int tag);

    // Where the last save of the measurements in the list went; empty when there was none.
    MutableProperty<std::string> const& savedPath() const { return m_saver.savedPath; }

    // As those of ResultSaver; saveCsv() sets isSavedAsCsv as well.
    void saveCsv();
    void saveSelectedCsv() { m_saver.saveSelectedCsv(); }
    void saveScreenshot() { m_saver.saveScreenshot(); }
    void saveViewAsPdf(PrintView& view) { m_saver.saveViewAsPdf(view); }

private:
    void receivePressure(float pressure);

    void connectionStarted();
    void stopMeasuring();
    void finishMeasurement();

    void stepTargetPressure(float step);
    void loadDefaultTargetPressure();

    RunLoop& m_runLoop;
    Clock const& m_clock;
    UserDefaults& m_userDefaults;
    ResultSaver m_saver;
    Menu* m_targetPressureMenu = nullptr;
    // While the percentage is that of a restored session: the one before.
    std::optional<float> m_ownPercent;

    // Gives each measurement of a connection its number.
    int m_measurementCount = 0;
    // Empty until the first connection; then: a pressure above 0 came since the measurement began,
    // a record came since the last tick, the reset timer runs.
    std::optional<bool> m_hasMeaningfulData;
    std::optional<bool> m_receivedData;
    std::optional<bool> m_isTimerSetUp;

    Subscription m_resetTimer;
    Subscriptions m_subscriptions;
};

} // namespace tensio
