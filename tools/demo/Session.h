#pragma once

#include "app/Startup.h"
#include "demo/Stage.h"
#include "platform/Clock.h"

#include <QProcess>
#include <QTemporaryDir>

#include <memory>
#include <optional>

namespace tensio {

class LatencyMeter;

// Runs as the system's clock does, but from another time on.
struct DemoClock : Clock {
    Date::duration ahead;

    explicit DemoClock(Date begin)
        : ahead(begin - std::chrono::system_clock::now())
    {
    }
    Date now() const override { return std::chrono::system_clock::now() + ahead; }
};

// Two sessions on two days as a clinician would run them, with the simulated device on a real
// terminal; what comes of them is looked at, backed up, and restored for another user.
class Session {
public:
    // The graph shows that many hours of earlier pressing, to see whether age slows it down.
    Session(LatencyMeter& meter, QString folder, int pastHours);

    // Throws DemoFailure when something does not go as it should.
    void play();

private:
    // The program again, with the stored sessions of this user, not of the one at the machine.
    void start(QString const& user);
    void refuseWithoutDevice();
    void plugIn(QStringList const& options);
    void addPast() const;
    void measure();
    void waitForTarget() const;
    void waitForMeasurements(std::size_t count) const;
    void finish();
    void save();
    void lookAtMenus();
    void printReports();
    void loseDevice();
    void openList() const;
    void openFirstSession();
    void showCourse();
    void moveToAnotherUser();
    void report() const;
    TensioManager& manager() const { return m_program->application.tensioManager(); }

    LatencyMeter& m_meter;
    QString m_folder;
    int m_pastHours;
    QTemporaryDir m_temporary;
    QProcess m_simulator;
    DemoClock m_clock;
    std::unique_ptr<StartedProgram> m_program;
    std::optional<Stage> m_stage;
};

} // namespace tensio
