#pragma once

#include "demo/Stage.h"
#include "output/Reports.h"

#include <QProcess>
#include <QTemporaryDir>

namespace tensio {

class Application;
class LatencyMeter;

// One session as a clinician would run it, with the simulated device on a real terminal.
class Session {
public:
    // The graph shows that many hours of earlier pressing, to see whether age slows it down.
    Session(Application& application, LatencyMeter& meter, QString const& folder, int pastHours);

    // Throws DemoFailure when something does not go as it should.
    void play();

private:
    void refuseWithoutDevice();
    void plugIn(QStringList const& options);
    void addPast() const;
    void measure();
    void waitForTarget() const;
    void waitForMeasurements(std::size_t count) const;
    void finish();
    void select();
    void save();
    void lookAtMenus();
    void printReports();
    void drawPage(ReportKind kind, QString const& pictureName);
    void loseDevice();
    void lookAtPastSessions();
    void report() const;

    Application& m_application;
    LatencyMeter& m_meter;
    Stage m_stage;
    int m_pastHours;
    QTemporaryDir m_temporary;
    QProcess m_simulator;
};

} // namespace tensio
