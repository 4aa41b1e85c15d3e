#pragma once

#include "device-simulator/PressingStory.h"
#include "device-simulator/Terminal.h"

#include <QFile>
#include <QTimer>

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace tensio {

struct SimulatorOptions {
    // Played instead of the pressing person when not empty.
    std::vector<TimedBytes> recordedStream;
    bool playsOnce = false;
    std::optional<int> pullAfterSeconds;
    QString stampsFile;
};

// Plays the device on a terminal: waits for a reader, then writes its records in time, from the
// start for each reader.
class Simulator : public QObject {
public:
    explicit Simulator(SimulatorOptions options);

    // Called when there is nothing more to play or the cable has been pulled.
    std::function<void()> onFinished;

private:
    void watchReader();
    void begin();
    void scheduleNext();
    void writeNext();
    void stamp();
    void pullCable();

    SimulatorOptions m_options;
    std::unique_ptr<Terminal> m_terminal;
    PressingStory m_story;
    std::deque<TimedBytes> m_ahead;
    QFile m_stamps;
    QTimer m_readerWatch;
    QTimer m_next;
    bool m_hadReader = false;
    double m_due = 0.0;
};

} // namespace tensio
