#include "Crash.h"

#include "Stage.h"
#include "app/Application.h"
#include "platform/qt/VirtualPorts.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QTest>

#include <cstdio>

namespace tensio {

namespace {

constexpr std::size_t wantedMeasurements = 3;

bool isRecorded(QProcess& program)
{
    QByteArray said;
    while (!said.contains("recorded") && program.waitForReadyRead(patienceMilliseconds))
        said += program.readAllStandardOutput();
    return said.contains("recorded");
}

} // namespace

bool hasSurvivedACrash(QString const& folder)
{
    std::puts("Measure, kill the program in mid-session, start it again, open the session.");
    std::fflush(stdout);
    QProcess simulator;
    simulator.start(
        QCoreApplication::applicationDirPath() + QStringLiteral("/tensio-device-simulator"),
        QStringList());
    QProcess first;
    first.start(QCoreApplication::applicationFilePath(), {measureUntilKilledOption, folder});
    bool const isReady = isRecorded(first);
    first.kill();
    first.waitForFinished();
    simulator.terminate();
    simulator.waitForFinished();
    return isReady
        && QProcess::execute(QCoreApplication::applicationFilePath(), {recoverOption, folder}) == 0;
}

void measureUntilKilled(Application& application, QString const& folder)
{
    Stage const stage(application.window(), folder);
    stage.waitUntil(QStringLiteral("the simulated device"), [] { return !virtualPorts().empty(); });
    auto& manager = application.tensioManager();
    stage.click(QStringLiteral("startButton"));
    stage.type(QStringLiteral("nameInput"), QStringLiteral("山田 花子"));
    stage.click(QStringLiteral("okButton"));
    stage.waitUntil(QStringLiteral("measurements"),
        [&] { return manager.measurementList.measurements().size() >= wantedMeasurements; });
    stage.waitUntil(QStringLiteral("a running one"),
        [&] { return manager.measurement->pressurePoints->size() > 40; });
    std::puts("recorded");
    std::fflush(stdout);
    stage.waitFor(patienceMilliseconds);
}

void recover(Application& application, QString const& folder)
{
    Stage stage(application.window(), folder);
    stage.waitFor(300);
    stage.takePicture(QStringLiteral("0-unsaved-session"));
    stage.chooseFromMenu(QStringLiteral("以前の測定を開く(&O)…"));
    stage.waitFor(300);
    stage.takePicture(QStringLiteral("0-past-sessions"));
    stage.expectAlert(
        QStringLiteral("以前の測定を1件すべて削除します。\n元に戻すことはできません。"),
        QStringLiteral("0-delete-question"), QStringLiteral("キャンセル"));
    stage.click(QStringLiteral("removeAllButton"));
    stage.waitForAlert();
    stage.click(QStringLiteral("closeButton"));
    stage.waitFor(100);
    stage.click(QStringLiteral("openUnsavedButton"));
    stage.waitFor(300);
    stage.takePicture(QStringLiteral("0-opened-session"));
    if (application.tensioManager().measurementList.measurements().size() <= wantedMeasurements)
        throw DemoFailure("a measurement was lost with the program");
}

} // namespace tensio
