#include "demo/Stage.h"

#include "app/TensioViewController.h"

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

#include <algorithm>
#include <cstdio>

namespace tensio {

namespace {

constexpr int patienceMilliseconds = 60'000;

[[noreturn]] void fail(QString const& text)
{
    throw DemoFailure(text.toStdString());
}

// A dialog stands above the window that opened it.
int windowsBelow(QWidget const* window)
{
    int count = 0;
    for (auto const* below = window->parentWidget(); below; below = below->parentWidget())
        count += below->isWindow() ? 1 : 0;
    return count;
}

QMessageBox* alertOnScreen()
{
    return qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
}

} // namespace

Stage::Stage(QMainWindow& window, QString const& folder)
    : m_window(window)
    , m_folder(folder)
{
    m_folder.mkpath(QStringLiteral("."));
    auto const content = QSizeF(TensioViewController::width, TensioViewController::height).toSize();
    // The height of the menu bar follows the scale of the content.
    constexpr int passes = 2;
    for (int pass = 0; pass < passes; ++pass) {
        m_window.resize(content.grownBy({0, m_window.menuBar()->sizeHint().height(), 0, 0}));
        QCoreApplication::processEvents();
    }
    // Alerts and panels have event loops of their own, so a timer must answer them.
    auto* watch = new QTimer(&m_window);
    QObject::connect(watch, &QTimer::timeout, &m_window, [this] {
        answerAlert();
        answerSavePanel();
    });
    watch->start(200);
}

void Stage::waitUntil(QString const& what, std::function<bool()> const& condition) const
{
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (!m_wrongAlert.isEmpty())
            fail(QStringLiteral("unexpected alert: ") + m_wrongAlert);
        if (timer.hasExpired(patienceMilliseconds))
            fail(QStringLiteral("waited in vain for: ") + what);
        QTest::qWait(10);
    }
}

void Stage::waitFor(int milliseconds) const
{
    QTest::qWait(milliseconds);
}

void Stage::click(QString const& name) const
{
    QTest::mouseClick(&find(name), Qt::LeftButton);
}

void Stage::type(QString const& name, QString const& text) const
{
    auto& input = dynamic_cast<QLineEdit&>(find(name));
    input.setFocus();
    input.selectAll();
    // Japanese comes through an input method, not through keys.
    QInputMethodEvent event;
    event.setCommitString(text);
    QApplication::sendEvent(&input, &event);
}

void Stage::expectAlert(QString const& text, QString const& pictureName)
{
    m_expectedAlert = text;
    m_alertPicture = pictureName;
}

void Stage::waitForAlert() const
{
    waitUntil(QStringLiteral("the alert ") + m_expectedAlert,
        [this] { return m_expectedAlert.isEmpty() && !alertOnScreen(); });
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

void Stage::expectSavePanel(QString const& fileName, QString const& pictureName)
{
    QFile::remove(m_folder.filePath(fileName));
    m_expectedFile = fileName;
    m_panelPicture = pictureName;
}

void Stage::waitForFile(QString const& fileName) const
{
    waitUntil(QStringLiteral("the file ") + fileName, [&] {
        return !qobject_cast<QFileDialog*>(QApplication::activeModalWidget())
            && QFileInfo(m_folder.filePath(fileName)).size() > 0;
    });
    std::printf("  %s\n", qPrintable(m_folder.filePath(fileName)));
}

void Stage::answerSavePanel()
{
    auto* panel = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    if (!panel || m_expectedFile.isEmpty())
        return;
    panel->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))
        ->setText(m_folder.absoluteFilePath(m_expectedFile.section(u'.', 0, -2)));
    takePicture(m_panelPicture);
    m_expectedFile.clear();
    QTest::keyClick(panel, Qt::Key_Return);
}

QList<QMenu*> Stage::menus() const
{
    QList<QMenu*> menus;
    for (auto const* item : m_window.menuBar()->actions())
        menus << item->menu();
    return menus;
}

void Stage::openMenu(QMenu& menu, QString const& pictureName) const
{
    auto const* bar = m_window.menuBar();
    menu.popup(bar->mapToGlobal(bar->actionGeometry(menu.menuAction()).bottomLeft()));
    waitFor(100);
    takePicture(pictureName);
    menu.close();
}

void Stage::chooseFromMenu(QString const& title) const
{
    for (auto const* menu : menus()) {
        for (auto* item : menu->actions()) {
            if (item->text() == title && item->isEnabled()) {
                item->trigger();
                return;
            }
        }
    }
    fail(QStringLiteral("no such command enabled: ") + title);
}

void Stage::takePicture(QString const& name) const
{
    // Dialogs may stand out over the edges of the main window.
    QWidgetList windows {&m_window};
    auto frame = m_window.geometry();
    for (auto* window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && window != &m_window) {
            windows << window;
            frame |= window->geometry();
        }
    }
    std::ranges::stable_sort(windows, {}, windowsBelow);
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
    auto const path = m_folder.filePath(name + QStringLiteral(".png"));
    // Little compression, since the session waits meanwhile.
    if (!picture.save(path, "PNG", 80))
        fail(QStringLiteral("cannot write ") + path);
    std::printf("  %s\n", qPrintable(path));
}

QWidget& Stage::find(QString const& name) const
{
    for (auto* window : QApplication::topLevelWidgets()) {
        auto* widget = window->findChild<QWidget*>(name);
        if (window->isVisible() && widget)
            return *widget;
    }
    fail(QStringLiteral("no such control on screen: ") + name);
}

} // namespace tensio
