#include "demo/Session.h"

#include "demo/LatencyMeter.h"
#include "feedback/GraphView.h"
#include "panels/HistorySlice.h"
#include "platform/qt/VirtualPorts.h"

#include <QDateTime>
#include <QTest>

#include <cstdio>
#include <utility>

using namespace Qt::StringLiterals;

namespace tensio {

Session::Session(LatencyMeter& meter, QString folder, int pastHours)
    : m_meter(meter)
    , m_folder(std::move(folder))
    , m_pastHours(pastHours)
    , m_clock(Date(std::chrono::milliseconds(
          QDateTime(QDate(2026, 4, 1), QTime(10, 0)).toMSecsSinceEpoch())))
{
    m_simulator.setProcessChannelMode(QProcess::ForwardedChannels);
}

void Session::play()
{
    start(u"user"_s);
    m_stage->takePicture(u"1-idle"_s);
    refuseWithoutDevice();
    measure();
    finish();
    save();
    lookAtMenus();
    printReports();
    m_clock.ahead += std::chrono::hours(24);
    start(u"user"_s);
    loseDevice();
    openFirstSession();
    showCourse();
    moveToAnotherUser();
    report();
}

void Session::start(QString const& user)
{
    m_stage.reset();
    QApplication::setQuitOnLastWindowClosed(false); // Only one of several programs ends.
    m_program.reset();
    qputenv("XDG_DATA_HOME", QFile::encodeName(m_temporary.filePath(user)));
    m_program = startProgram(m_meter, m_clock);
    m_stage.emplace(m_program->application.window(), m_folder);
    QTest::qWait(300);
}

void Session::refuseWithoutDevice()
{
    std::puts("Start without a device: the connection is refused.");
    click(u"startButton"_s);
    type(u"pressureInput"_s, u"30.0"_s);
    type(u"nameInput"_s, u"山田 花子"_s);
    QTest::qWait(100);
    m_stage->takePicture(u"2-dialog"_s);
    m_stage->expectAlert(u"COMポートがオープンできません。"_s, u"3-connection-refused"_s,
        [] { click(u"okButton"_s); });
}

void Session::plugIn(QStringList const& options)
{
    m_simulator.start(
        QCoreApplication::applicationDirPath() + u"/tensio-device-simulator"_s, options);
    m_stage->waitUntil(u"the simulated device"_s,
        [] { return QFile::exists(virtualPortsFolder() + u"/SLAB_USBtoUART-simulator"_s); });
}

void Session::addPast() const
{
    constexpr int pointsPerHour = 20 * 3600;
    auto* plotter = m_program->application.window().findChild<GraphView*>()->plotter();
    for (int point = 0; point < m_pastHours * pointsPerHour; ++point)
        plotter->addPressurePoint(static_cast<float>(point % 45));
}

void Session::measure()
{
    std::puts("Plug the simulated device in, press OK again, measure six times.");
    plugIn({u"--stamps"_s, m_temporary.filePath(u"stamps"_s)});
    auto const counting = manager().serialPortManager.pressure.observeChanges(
        [this](float) { m_meter.recordArrived(); });
    click(u"okButton"_s);
    m_stage->waitUntil(u"the connection"_s, [this] { return !manager().isShowingPopup.value(); });
    addPast();
    m_stage->waitUntil(
        u"the first pressure"_s, [this] { return manager().currentPressure.value() > 5.0f; });
    QTest::qWait(600);
    m_stage->takePicture(u"4-below-target"_s);
    waitForTarget();
    QTest::qWait(750);
    m_stage->takePicture(u"5-blinking"_s);
    waitForMeasurements(4);
    waitForTarget();
    QTest::qWait(900);
    m_stage->takePicture(u"6-measuring"_s);
    m_stage->takeNumberedPicture(u"6-measuring-numbered"_s,
        u"nameCaption dateTimeLabel printButton scaleCaption gaugeView graphView timeCaption "
        "maxPressureImage targetPressureImage targetCard currentCard maxCard statusImageView "
        "startButton titleLabel averageCaption"_s.split(u' '));
    waitForMeasurements(6);
}

void Session::waitForTarget() const
{
    m_stage->waitUntil(u"a pressure at the target"_s,
        [this] { return manager().currentPressure.value() >= manager().targetPressure.value(); });
}

void Session::waitForMeasurements(std::size_t count) const
{
    m_stage->waitUntil(u"%1 measurements"_s.arg(count),
        [&] { return manager().measurementList.measurements().size() >= count; });
}

void Session::finish()
{
    std::puts("Finish, select three.");
    click(u"finishButton"_s);
    m_stage->waitUntil(
        u"the end of the session"_s, [this] { return !manager().isMeasuring.value(); });
    QTest::qWait(300);
    m_stage->takePicture(u"7-finished"_s);
    for (auto* tile : m_program->application.window().findChildren<HistorySlice*>().first(3))
        QTest::mouseClick(tile, Qt::LeftButton);
    m_stage->takePicture(u"8-selected"_s);
}

void Session::save()
{
    std::puts("Save all as CSV, the screen as PNG.");
    m_stage->saveAs(u"all.csv"_s, [] { click(u"saveButton"_s); });
    m_stage->saveAs(u"screen.png"_s, [] { click(u"screenSaveButton"_s); });
}

void Session::lookAtMenus()
{
    std::puts("Open each menu and the about window.");
    m_stage->takePicturesOfMenus(u"9-menu-"_s);
    m_stage->chooseFromMenu(u"tensioについて(&A)"_s);
    QTest::qWait(100);
    m_stage->takePicture(u"9-about"_s);
    click(u"closeButton"_s);
}

void Session::printReports()
{
    std::puts("Look at the reports in the print preview, save them as PDF.");
    m_stage->chooseFromMenu(u"一覧を印刷(&L)…"_s);
    for (auto const& kind : {u"list"_s, u"grid"_s, u"selected"_s, u"curves"_s}) {
        click(kind + u"Button"_s);
        QTest::qWait(300);
        m_stage->takePicture(u"10-preview-"_s + kind);
        m_stage->saveAs(kind + u".pdf"_s, [] { click(u"savePdfButton"_s); });
    }
    click(u"closeButton"_s);
}

void Session::loseDevice()
{
    std::puts("The next day, measure again; the cable is pulled.");
    m_simulator.terminate();
    m_simulator.waitForFinished();
    plugIn({u"--pull"_s, u"12"_s});
    click(u"startButton"_s);
    type(u"nameInput"_s, u"山田 花子"_s);
    m_stage->expectAlert(u"切断されました。"_s, u"11-cable-pulled"_s, [] { click(u"okButton"_s); });
    m_stage->takePicture(u"12-after-the-loss"_s);
}

void Session::openList() const
{
    m_stage->chooseFromMenu(u"以前の測定を開く(&O)…"_s);
    QTest::qWait(300);
}

void Session::openFirstSession()
{
    std::puts("Open the session of the day before from the list.");
    openList();
    press(u"sessionList"_s, Qt::Key_Down);
    m_stage->takePicture(u"13-past-sessions"_s);
    click(u"openButton"_s);
    QTest::qWait(300);
    m_stage->takePicture(u"14-opened-again"_s);
}

void Session::showCourse()
{
    std::puts("Look at the course of both sessions, save it as PDF.");
    openList();
    press(u"sessionList"_s, Qt::Key_A, Qt::ControlModifier);
    click(u"courseButton"_s);
    QTest::qWait(300);
    click(u"fitPageButton"_s);
    m_stage->takePicture(u"15-course"_s);
    m_stage->saveAs(u"course.pdf"_s, [] { click(u"savePdfButton"_s); });
    click(u"closeButton"_s);
    click(u"closeButton"_s);
}

void Session::moveToAnotherUser()
{
    std::puts("Back up; another user restores both sessions.");
    auto const backup = u"backup.db"_s;
    m_stage->expectAlert(
        u"2件の測定をバックアップしました。\n氏名と測定値が含まれます。"_s, u"16-backed-up"_s, [&] {
            m_stage->saveAs(backup, [this] { m_stage->chooseFromMenu(u"バックアップ(&B)…"_s); });
        });
    start(u"another user"_s);
    m_stage->expectAlert(u"2件の測定を戻しました。"_s, u"17-restored"_s, [&] {
        m_stage->expectFilePanel(backup);
        m_stage->chooseFromMenu(u"バックアップから戻す(&R)…"_s);
    });
    openList();
    m_stage->takePicture(u"18-restored-sessions"_s);
}

void Session::report() const
{
    auto const latency = m_meter.percentile95(m_temporary.filePath(u"stamps"_s));
    std::printf(
        "Record written to pressure shown, 95th percentile: %.1f ms (at most 50 ms).\n", latency);
    if (latency < 0.0 || latency > 50.0)
        throw DemoFailure("pressures reach the screen too late");
}

} // namespace tensio
