#include "Gallery.h"

#include "ControlStates.h"
#include "app/Application.h"
#include "panels/HistorySlice.h"
#include "toolkit/ImageView.h"

#include <QApplication>
#include <QTest>

#include <algorithm>
#include <cmath>

namespace tensio {

namespace {

// Ten of the widest characters: the longest name that there can be.
auto const longestName = QStringLiteral("東海林龍太郎左衛門尉");
constexpr int pointsPerSecond = 20;

// Rises within a second, trembles, falls within a second.
float pressing(double seconds, double length, double height)
{
    auto const edge = std::min({seconds, length - seconds, 1.0});
    return static_cast<float>(edge * (height + std::sin(seconds * 17.0)));
}

} // namespace

Gallery::Gallery(Application& application, QString const& folder)
    : m_application(application)
    , m_manager(application.tensioManager())
    , m_stage(application.window(), folder)
{
}

void Gallery::show()
{
    for (auto const size : {QSize(1040, 692), QSize(700, 692), QSize(1040, 500), QSize(1600, 600)})
        showMainWindow(size);
    showControlStates(m_stage, m_application.window(), QStringLiteral("window"));
    for (auto const size : {QSize(1600, 1064), QSize(1040, 692)}) {
        m_stage.resizeContent(size);
        showDialog(QStringLiteral("dialog-%1-").arg(size.width()));
    }
    showPreview();
}

void Gallery::showMainWindow(QSize size)
{
    m_stage.resizeContent(size);
    m_prefix = QStringLiteral("%1x%2-").arg(size.width()).arg(size.height());
    forgetAll();
    take(QStringLiteral("1-idle"));
    m_manager.username.setValue(longestName.toStdString());
    m_manager.isMeasuring.setValue(true);
    m_manager.targetPressure.setValue(30.0f);
    m_manager.measurement = std::make_shared<Measurement>(1);
    take(QStringLiteral("2-connected"));
    press();
    take(QStringLiteral("3-pressing"));
    auto const* marker
        = m_application.window().findChild<ImageView*>(QStringLiteral("targetPressureImage"));
    m_manager.serialPortManager.pressure.setValue(38.2f);
    m_stage.waitFor(600);
    for (auto const* phase : {"gauge_target", "gauge_target_on"}) {
        auto const picture = QString::fromLatin1(phase);
        m_stage.waitUntil(picture, [&] { return marker->picture().name() == picture; });
        m_stage.takePicture(m_prefix + QStringLiteral("4-") + picture);
    }
    measure({35.2f, 31.0f, 38.2f, 29.7f, 33.3f});
    take(QStringLiteral("5-five-measurements"));
    m_manager.isMeasuring.setValue(false);
    take(QStringLiteral("6-finished"));
    selectThree();
    take(QStringLiteral("7-selected"));
    forgetAll();
    measure(std::vector<float>(99, 100.0f), 25);
    m_manager.currentPressure.setValue(999.9f);
    m_manager.maxPressure.setValue(999.9f);
    m_manager.targetPressure.setValue(80.0f);
    m_manager.isMeasuring.setValue(false);
    selectThree();
    take(QStringLiteral("8-widest"));
}

void Gallery::showDialog(QString const& prefix)
{
    forgetAll();
    m_stage.click(QStringLiteral("startButton"));
    showControlStates(m_stage, *QApplication::activeModalWidget(), prefix.chopped(1));
    m_prefix = prefix;
    m_stage.type(QStringLiteral("nameInput"), QString());
    take(QStringLiteral("1-empty"));
    m_stage.type(QStringLiteral("nameInput"), longestName);
    take(QStringLiteral("2-valid"));
    m_stage.type(QStringLiteral("nameInput"), longestName + longestName + longestName);
    take(QStringLiteral("3-too-long"));
    m_stage.click(QStringLiteral("okButton"));
    take(QStringLiteral("4-cut"));
    m_stage.type(QStringLiteral("pressureInput"), QStringLiteral("12,5"));
    m_stage.click(QStringLiteral("okButton"));
    take(QStringLiteral("5-no-number"));
    m_stage.type(QStringLiteral("pressureInput"), QStringLiteral("95"));
    m_stage.click(QStringLiteral("okButton"));
    take(QStringLiteral("6-too-high"));
    m_stage.expectAlert(
        QStringLiteral("COMポートがオープンできません。"), prefix + QStringLiteral("7-refused"));
    m_stage.click(QStringLiteral("okButton"));
    m_stage.waitForAlert();
    m_stage.click(QStringLiteral("cancelButton"));
}

void Gallery::showPreview()
{
    m_prefix = QStringLiteral("preview-");
    forgetAll();
    measure(std::vector<float>(99, 100.0f));
    m_manager.isMeasuring.setValue(false);
    m_stage.chooseFromMenu(QStringLiteral("一覧を印刷(&L)…"));
    take(QStringLiteral("nothing-selected"));
    showControlStates(m_stage, *QApplication::activeModalWidget(), QStringLiteral("preview"));
    m_stage.click(QStringLiteral("pageSetupButton"));
    take(QStringLiteral("page-setup"));
    QApplication::activeModalWidget()->close();
    m_stage.click(QStringLiteral("closeButton"));
}

void Gallery::forgetAll()
{
    m_manager.measurement.reset();
    m_manager.measurementList.reset();
    m_manager.isMeasuring.setValue(false);
    m_manager.username.setValue({});
    m_manager.currentPressure.setValue(0.0f);
    m_manager.maxPressure.setValue(0.0f);
    m_manager.targetPressure.setValue(0.0f);
    m_manager.shouldReset.setValue(true);
}

void Gallery::press()
{
    for (double const height : {24.0, 36.0, 27.0, 31.4}) {
        for (int point = 0; point < 7 * pointsPerSecond; ++point) {
            auto const seconds = static_cast<double>(point) / pointsPerSecond;
            m_manager.serialPortManager.pressure.setValue(pressing(seconds, 5.0, height));
        }
    }
    m_manager.serialPortManager.pressure.setValue(25.3f);
}

void Gallery::measure(std::vector<float> const& bestPressures, int firstNumber)
{
    m_manager.username.setValue(longestName.toStdString());
    m_manager.isMeasuring.setValue(true);
    int number = firstNumber;
    for (float const bestPressure : bestPressures) {
        auto const measurement = std::make_shared<Measurement>(number);
        measurement->bestPressure = bestPressure;
        measurement->targetPressure = 80.0f;
        measurement->timeStamp
            = m_manager.currentTime.value() + std::chrono::seconds(13 * number++);
        m_manager.measurementList.add(measurement);
    }
}

void Gallery::selectThree()
{
    for (int const index : {0, 2, 4})
        QTest::mouseClick(
            m_application.window().findChildren<HistorySlice*>().at(index), Qt::LeftButton);
}

void Gallery::take(QString const& name) const
{
    m_stage.waitFor(600);
    m_stage.takePicture(m_prefix + name);
}

} // namespace tensio
