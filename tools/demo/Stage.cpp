#include "demo/Stage.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPainter>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include <algorithm>
#include <cstdio>
#include <utility>

using namespace Qt::StringLiterals;

namespace tensio {

namespace {

constexpr int patienceMilliseconds = 60'000;

[[noreturn]] void fail(QString const& text)
{
    throw DemoFailure(text.toStdString());
}

QWidget& find(QString const& name)
{
    // The one in front first: others may have a button of this name.
    QWidgetList windows {QApplication::activeModalWidget()};
    windows << QApplication::topLevelWidgets();
    for (auto* window : windows) {
        auto* widget = window ? window->findChild<QWidget*>(name) : nullptr;
        if (widget && window->isVisible())
            return *widget;
    }
    fail(u"no such control on screen: "_s + name);
}

QMessageBox* alertOnScreen()
{
    return qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
}

} // namespace

void click(QString const& name)
{
    QTest::mouseClick(&find(name), Qt::LeftButton);
}

void type(QString const& name, QString const& text)
{
    auto& input = dynamic_cast<QLineEdit&>(find(name));
    input.setFocus();
    input.selectAll();
    // Japanese comes through an input method, not through keys.
    QInputMethodEvent event;
    event.setCommitString(text);
    QApplication::sendEvent(&input, &event);
}

void press(QString const& name, Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(&find(name), key, modifiers);
}

Stage::Stage(QMainWindow& window, QString const& folder)
    : m_window(window)
    , m_folder(folder)
{
    m_folder.mkpath(u"."_s);
    // The design and its menu bar.
    m_window.resize(1040, 721);
    // Alerts and panels have event loops of their own, so a timer must answer them, once they have
    // stood for a while.
    auto* watch = new QTimer(&m_window);
    QObject::connect(watch, &QTimer::timeout, &m_window, [this] {
        auto* dialog = QApplication::activeModalWidget();
        if (std::exchange(m_dialogBefore, dialog) == dialog) {
            answerAlert();
            answerFilePanel();
        }
    });
    watch->start(200);
}

void Stage::waitUntil(QString const& what, std::function<bool()> const& condition) const
{
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (!m_wrongAlert.isEmpty())
            fail(u"unexpected alert: "_s + m_wrongAlert);
        if (timer.hasExpired(patienceMilliseconds))
            fail(u"waited in vain for: "_s + what);
        QTest::qWait(10);
    }
}

void Stage::expectAlert(
    QString const& text, QString const& pictureName, std::function<void()> const& command)
{
    m_expectedAlert = text;
    m_alertPicture = pictureName;
    command();
    waitUntil(
        u"the alert "_s + text, [this] { return m_expectedAlert.isEmpty() && !alertOnScreen(); });
}

void Stage::answerAlert()
{
    auto* alert = alertOnScreen();
    if (!alert)
        return;
    if (alert->text() == m_expectedAlert)
        takePicture(m_alertPicture);
    else
        m_wrongAlert = alert->text();
    m_expectedAlert.clear();
    QTest::mouseClick(alert->buttons().constFirst(), Qt::LeftButton);
}

void Stage::expectFilePanel(QString const& fileName)
{
    m_expectedFile = fileName;
}

void Stage::saveAs(QString const& fileName, std::function<void()> const& command)
{
    auto const path = m_folder.filePath(fileName);
    QFile::remove(path);
    expectFilePanel(fileName);
    command();
    waitUntil(u"the file "_s + fileName, [&] {
        return !qobject_cast<QFileDialog*>(QApplication::activeModalWidget())
            && QFileInfo(path).size() > 0;
    });
    std::printf("  %s\n", qPrintable(path));
}

void Stage::answerFilePanel()
{
    auto* panel = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    if (!panel || m_expectedFile.isEmpty())
        return;
    panel->findChild<QLineEdit*>(u"fileNameEdit"_s)
        ->setText(m_folder.absoluteFilePath(m_expectedFile));
    takePicture(u"panel-"_s + m_expectedFile);
    m_expectedFile.clear();
    QTest::keyClick(panel, Qt::Key_Return);
}

void Stage::takePicturesOfMenus(QString const& name) const
{
    auto const* bar = m_window.menuBar();
    for (int number = 1; auto* item : bar->actions()) {
        item->menu()->popup(bar->mapToGlobal(bar->actionGeometry(item).bottomLeft()));
        QTest::qWait(100);
        takePicture(name + QString::number(number++));
        item->menu()->close();
    }
}

void Stage::chooseFromMenu(QString const& title) const
{
    for (auto* command : m_window.findChildren<QAction*>()) {
        if (command->text() == title && command->isEnabled())
            return command->trigger();
    }
    fail(u"no such command enabled: "_s + title);
}

void Stage::takePicture(QString const& name) const
{
    // In the order in which they were opened. Dialogs may stand out over the edges of the main
    // window.
    QWidgetList windows;
    QRect frame;
    for (auto const* handle : QGuiApplication::topLevelWindows()) {
        if (auto* window = handle->isVisible() ? QWidget::find(handle->winId()) : nullptr) {
            windows << window;
            frame |= window->geometry();
        }
    }
    auto const ratio = m_window.devicePixelRatioF();
    QImage picture((QSizeF(frame.size()) * ratio).toSize(), QImage::Format_RGB32);
    picture.setDevicePixelRatio(ratio);
    picture.fill(QColor(0x70, 0x78, 0x84));
    QPainter painter(&picture);
    for (auto* window : windows)
        painter.drawPixmap(window->geometry().topLeft() - frame.topLeft(), window->grab());
    painter.end();
    keep(picture, name);
}

void Stage::takeNumberedPicture(QString const& name, QStringList const& controls) const
{
    constexpr int size = 22;
    auto picture = m_window.grab().toImage();
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    for (int number = 1; auto const& each : controls) {
        auto const& control = find(each);
        QRect const frame(control.mapTo(&m_window, QPoint(0, 0)), control.size());
        QRect spot(0, 0, size, size);
        // Beside a small control, so that the number does not cover it.
        spot.moveCenter(frame.height() < 2 * size
                ? QPoint(frame.left() - size / 2 - 1, frame.center().y())
                : frame.topLeft());
        spot.moveLeft(std::max(spot.left(), 1));
        painter.setPen(QPen(Qt::white, 2.0));
        painter.setBrush(Qt::darkMagenta);
        painter.drawEllipse(spot);
        painter.drawText(spot, Qt::AlignCenter, QString::number(number++));
    }
    painter.end();
    keep(picture, name);
}

void Stage::keep(QImage const& picture, QString const& name) const
{
    auto const path = m_folder.filePath(name + u".png"_s);
    // Little compression, since the session waits meanwhile.
    if (!picture.save(path, "PNG", 80))
        fail(u"cannot write "_s + path);
    std::printf("  %s\n", qPrintable(path));
}

} // namespace tensio
