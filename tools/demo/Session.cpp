#include "Session.h"

#include "LatencyMeter.h"
#include "app/Application.h"
#include "panels/HistorySlice.h"
#include "platform/qt/VirtualPorts.h"

#include <QCoreApplication>
#include <QTest>

#include <cstdio>

namespace tensio {

Session::Session(Application& application, LatencyMeter& meter, QString const& folder)
    : m_application(application)
    , m_meter(meter)
    , m_stage(application.window(), folder)
{
    m_simulator.setProcessChannelMode(QProcess::ForwardedChannels);
}

void Session::play()
{
    m_stage.waitFor(300);
    m_stage.takePicture(QStringLiteral("1-idle"));
    refuseWithoutDevice();
    measureThreeTimes();
    finish();
    select();
    save();
    loseDevice();
    report();
}

void Session::refuseWithoutDevice()
{
    std::puts("Start without a device: the connection is refused.");
    m_stage.click(QStringLiteral("startButton"));
    m_stage.type(QStringLiteral("nameInput"), QStringLiteral("山田 花子"));
    m_stage.waitFor(100);
    m_stage.takePicture(QStringLiteral("2-dialog"));
    m_stage.expectAlert(
        QStringLiteral("COMポートがオープンできません。"), QStringLiteral("3-connection-refused"));
    m_stage.click(QStringLiteral("okButton"));
    m_stage.waitForAlert();
}

void Session::plugIn(QStringList const& options)
{
    auto const program
        = QCoreApplication::applicationDirPath() + QStringLiteral("/tensio-device-simulator");
    m_simulator.start(program, options);
    auto const port = QStringLiteral("SLAB_USBtoUART-simulator");
    m_stage.waitUntil(QStringLiteral("the simulated device"),
        [&] { return QFile::exists(virtualPortsFolder() + u'/' + port); });
}

void Session::measureThreeTimes()
{
    std::puts("Plug the simulated device in, press OK again, measure three times.");
    plugIn({QStringLiteral("--stamps"), m_temporary.filePath(QStringLiteral("stamps"))});
    auto& manager = m_application.tensioManager();
    auto const counting = manager.serialPortManager.pressure.observeChanges(
        [this](float) { m_meter.recordArrived(); });
    m_stage.click(QStringLiteral("okButton"));
    m_stage.waitUntil(QStringLiteral("the first pressure"),
        [&] { return manager.currentPressure.value() > 5.0f; });
    m_stage.waitFor(600);
    m_stage.takePicture(QStringLiteral("4-below-target"));
    m_stage.waitUntil(QStringLiteral("a pressure at the target"),
        [&] { return manager.currentPressure.value() >= manager.targetPressure.value(); });
    m_stage.waitFor(750);
    m_stage.takePicture(QStringLiteral("5-blinking"));
    m_stage.waitUntil(QStringLiteral("three measurements"),
        [&] { return manager.measurementList.measurements().size() >= 3; });
    m_stage.takePicture(QStringLiteral("6-three-measurements"));
}

void Session::finish()
{
    std::puts("Finish.");
    m_stage.click(QStringLiteral("finishButton"));
    m_stage.waitUntil(QStringLiteral("the end of the session"),
        [&] { return !m_application.tensioManager().isMeasuring.value(); });
    m_stage.takePicture(QStringLiteral("7-finished"));
}

void Session::select()
{
    std::puts("Page back and forth, select three.");
    m_stage.click(QStringLiteral("backButton"));
    m_stage.click(QStringLiteral("forwardButton"));
    for (auto* tile : m_application.window().findChildren<HistorySlice*>().first(3))
        QTest::mouseClick(tile, Qt::LeftButton);
    if (m_application.tensioManager().measurementList.counted().size() != 3)
        throw DemoFailure("three measurements should be selected");
    m_stage.takePicture(QStringLiteral("8-selected"));
}

void Session::save()
{
    std::puts("Save all as CSV, the selection as CSV, the screen as PNG.");
    m_stage.expectSavePanel(QStringLiteral("all.csv"), QStringLiteral("9-save-csv"));
    m_stage.click(QStringLiteral("saveButton"));
    m_stage.waitForFile(QStringLiteral("all.csv"));
    m_stage.expectSavePanel(QStringLiteral("selected.csv"), QStringLiteral("9-save-selected-csv"));
    m_application.tensioManager().saveSelectedCsv();
    m_stage.waitForFile(QStringLiteral("selected.csv"));
    m_stage.expectSavePanel(QStringLiteral("screen.png"), QStringLiteral("10-save-screen"));
    m_stage.click(QStringLiteral("screenSaveButton"));
    m_stage.waitForFile(QStringLiteral("screen.png"));
}

void Session::loseDevice()
{
    std::puts("Start anew; the cable is pulled.");
    m_simulator.terminate();
    m_simulator.waitForFinished();
    plugIn({QStringLiteral("--pull"), QStringLiteral("5")});
    m_stage.expectAlert(
        QStringLiteral("前回の舌圧測定データが削除されます。\nよろしいでしょうか？"),
        QStringLiteral("11-start-anew"));
    m_stage.click(QStringLiteral("startButton"));
    m_stage.waitForAlert();
    m_stage.expectAlert(QStringLiteral("切断されました。"), QStringLiteral("12-cable-pulled"));
    m_stage.click(QStringLiteral("okButton"));
    m_stage.waitForAlert();
    m_stage.takePicture(QStringLiteral("13-after-the-loss"));
}

void Session::report() const
{
    auto const latency = m_meter.percentile95(m_temporary.filePath(QStringLiteral("stamps")));
    std::printf(
        "Record written to pressure shown, 95th percentile: %.1f ms (at most 50 ms).\n", latency);
    if (latency < 0.0 || latency > 50.0)
        throw DemoFailure("pressures reach the screen too late");
}

} // namespace tensio
