#include "demo/Session.h"

#include "app/Application.h"
#include "demo/LatencyMeter.h"
#include "feedback/GraphView.h"
#include "panels/HistorySlice.h"
#include "platform/qt/VirtualPorts.h"
#include "printing/QtPrintCanvas.h"

#include <QCoreApplication>
#include <QImage>
#include <QPainter>
#include <QTest>

#include <cstdio>

namespace tensio {

Session::Session(
    Application& application, LatencyMeter& meter, QString const& folder, int pastHours)
    : m_application(application)
    , m_meter(meter)
    , m_stage(application.window(), folder)
    , m_pastHours(pastHours)
{
    m_simulator.setProcessChannelMode(QProcess::ForwardedChannels);
}

void Session::play()
{
    m_stage.waitFor(300);
    m_stage.takePicture(QStringLiteral("1-idle"));
    refuseWithoutDevice();
    measure();
    finish();
    select();
    save();
    lookAtMenus();
    printReports();
    loseDevice();
    lookAtPastSessions();
    report();
}

void Session::refuseWithoutDevice()
{
    std::puts("Start without a device: the connection is refused.");
    m_stage.click(QStringLiteral("startButton"));
    m_stage.type(QStringLiteral("pressureInput"), QStringLiteral("30.0"));
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
    QString const program
        = QCoreApplication::applicationDirPath() + QStringLiteral("/tensio-device-simulator");
    m_simulator.start(program, options);
    auto const port = QStringLiteral("SLAB_USBtoUART-simulator");
    m_stage.waitUntil(QStringLiteral("the simulated device"),
        [&] { return QFile::exists(virtualPortsFolder() + u'/' + port); });
}

void Session::addPast() const
{
    constexpr int pointsPerHour = 20 * 3600;
    auto* plotter = m_application.window().findChild<GraphView*>()->plotter();
    for (int point = 0; point < m_pastHours * pointsPerHour; ++point)
        plotter->addPressurePoint(static_cast<float>(point % 45));
}

void Session::measure()
{
    std::puts("Plug the simulated device in, press OK again, measure six times.");
    plugIn({QStringLiteral("--stamps"), m_temporary.filePath(QStringLiteral("stamps"))});
    auto& manager = m_application.tensioManager();
    auto const counting = manager.serialPortManager.pressure.observeChanges(
        [this](float) { m_meter.recordArrived(); });
    m_stage.click(QStringLiteral("okButton"));
    m_stage.waitUntil(
        QStringLiteral("the connection"), [&] { return !manager.isShowingPopup.value(); });
    addPast();
    m_stage.waitUntil(QStringLiteral("the first pressure"),
        [&] { return manager.currentPressure.value() > 5.0f; });
    m_stage.waitFor(600);
    m_stage.takePicture(QStringLiteral("4-below-target"));
    waitForTarget();
    m_stage.waitFor(750);
    m_stage.takePicture(QStringLiteral("5-blinking"));
    waitForMeasurements(4);
    waitForTarget();
    m_stage.waitFor(900);
    m_stage.takePicture(QStringLiteral("6-measuring"));
    m_stage.takeNumberedPicture(QStringLiteral("6-measuring-numbered"),
        QStringLiteral(
            "nameCaption dateTimeLabel printButton scaleCaption gaugeView graphView timeCaption "
            "maxPressureImage targetPressureImage targetCard currentCard maxCard statusImageView "
            "startButton titleLabel averageCaption")
            .split(u' '));
    waitForMeasurements(6);
    m_stage.takePicture(QStringLiteral("6-six-measurements"));
}

void Session::waitForTarget() const
{
    auto& manager = m_application.tensioManager();
    m_stage.waitUntil(QStringLiteral("a pressure at the target"),
        [&] { return manager.currentPressure.value() >= manager.targetPressure.value(); });
}

void Session::waitForMeasurements(std::size_t count) const
{
    auto const& list = m_application.tensioManager().measurementList;
    m_stage.waitUntil(QStringLiteral("%1 measurements").arg(count),
        [&] { return list.measurements().size() >= count; });
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

void Session::lookAtMenus()
{
    std::puts("Open each menu and the about window.");
    int number = 1;
    for (auto* menu : m_stage.menus())
        m_stage.openMenu(*menu, QStringLiteral("11-menu-%1").arg(number++));
    m_stage.chooseFromMenu(QStringLiteral("tensioについて(&A)"));
    m_stage.waitFor(100);
    m_stage.takePicture(QStringLiteral("11-about"));
    m_stage.click(QStringLiteral("closeButton"));
}

void Session::printReports()
{
    std::puts("Save the reports as PDF, look at the print preview.");
    for (auto const& [item, file] : {std::pair {"一覧をPDFとして保存(&L)…", "list.pdf"},
             {"グリッドをPDFとして保存(&G)…", "grid.pdf"}}) {
        auto const name = QString::fromUtf8(file);
        m_stage.expectSavePanel(name, QStringLiteral("12-save-") + name.section(u'.', 0, 0));
        m_stage.chooseFromMenu(QString::fromUtf8(item));
        m_stage.waitForFile(name);
    }
    m_stage.chooseFromMenu(QStringLiteral("一覧を印刷(&L)…"));
    for (auto const* kind : {"list", "grid", "selected"}) {
        m_stage.click(QString::fromUtf8(kind) + QStringLiteral("Button"));
        m_stage.waitFor(300);
        m_stage.takePicture(QStringLiteral("13-preview-") + QString::fromUtf8(kind));
    }
    m_stage.expectSavePanel(QStringLiteral("selected.pdf"), QStringLiteral("12-save-selected"));
    m_stage.click(QStringLiteral("savePdfButton"));
    m_stage.waitForFile(QStringLiteral("selected.pdf"));
    m_stage.click(QStringLiteral("closeButton"));
    drawPage(ReportKind::List, QStringLiteral("14-page-list"));
    drawPage(ReportKind::Grid, QStringLiteral("14-page-grid"));
    drawPage(ReportKind::Selected, QStringLiteral("14-page-selected"));
}

void Session::drawPage(ReportKind kind, QString const& pictureName)
{
    constexpr double pixelsPerPoint = 150.0 / 72.0;
    PrintInfo const paper;
    QImage page(qRound(paper.paperWidth * pixelsPerPoint),
        qRound(paper.paperHeight * pixelsPerPoint), QImage::Format_RGB32);
    page.fill(Qt::white);
    QPainter painter(&page);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(pixelsPerPoint, pixelsPerPoint);
    QtPrintCanvas canvas(&painter);
    auto const report = makeReport(kind, m_application.tensioManager());
    report->paginate(paper, canvas);
    report->rectForPage(1);
    report->draw(canvas);
    painter.end();
    m_stage.keep(page, pictureName);
}

void Session::loseDevice()
{
    std::puts("Start again; the cable is pulled.");
    m_simulator.terminate();
    m_simulator.waitForFinished();
    plugIn({QStringLiteral("--pull"), QStringLiteral("5")});
    m_stage.expectAlert(
        QStringLiteral("前回の舌圧測定データが削除されます。\nよろしいでしょうか？"),
        QStringLiteral("15-next-start"));
    m_stage.click(QStringLiteral("startButton"));
    m_stage.waitForAlert();
    m_stage.expectAlert(QStringLiteral("切断されました。"), QStringLiteral("16-cable-pulled"));
    m_stage.click(QStringLiteral("okButton"));
    m_stage.waitForAlert();
    m_stage.takePicture(QStringLiteral("17-after-the-loss"));
}

void Session::lookAtPastSessions()
{
    std::puts("Look at the stored sessions.");
    m_stage.chooseFromMenu(QStringLiteral("以前の測定を開く(&O)…"));
    m_stage.waitFor(300);
    m_stage.takePicture(QStringLiteral("18-past-sessions"));
    m_stage.click(QStringLiteral("closeButton"));
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
