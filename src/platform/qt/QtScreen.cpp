#include "platform/qt/QtScreen.h"

#include "platform/CaptureRectangle.h"
#include "platform/qt/MainQueue.h"

#include <QBuffer>
#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QProcess>
#include <QScreen>
#include <QWidget>

using namespace Qt::StringLiterals;

namespace tensio {

namespace {

// In Qt's coordinates, which begin at the corner of all screens together.
QRect mainScreen()
{
    return QGuiApplication::primaryScreen()->geometry();
}

#ifndef Q_OS_MACOS
// The area is that of the window, measured from the main screen's corner.
QImage pictureOf(QWidget& window, ScreenRect const& area)
{
    QPixmap picture;
    if (QGuiApplication::platformName() == u"xcb"_s) {
        // Screens of different scales share no unit: the window's own counts from its own corner.
        auto* screen = window.screen();
        auto const origin = mainScreen().topLeft() - screen->geometry().topLeft();
        auto const rect
            = QRectF(area.x, area.y, area.width, area.height).translated(origin).toAlignedRect();
        picture = screen->grabWindow(0, rect.x(), rect.y(), rect.width(), rect.height());
    }
    return (picture.isNull() ? window.grab() : picture).toImage();
}
#endif

} // namespace

ScreenRect QtScreen::mainWindowFrame() const
{
    if (!m_window)
        return {};
    QRectF const frame = m_window->frameGeometry().translated(-mainScreen().topLeft());
    return {
        frame.x(), mainScreenHeight() - frame.y() - frame.height(), frame.width(), frame.height()};
}

double QtScreen::mainScreenHeight() const
{
    return mainScreen().height();
}

void QtScreen::captureToClipboard(ScreenRect const& area)
{
    auto const hold = m_queue.hold();
    if (m_window)
        m_window->repaint();
#ifdef Q_OS_MACOS
    QProcess::execute(u"/usr/sbin/screencapture"_s,
        {u"-c"_s, u"-R"_s, QString::fromStdString(captureRectangle(area))});
#else
    // Without a picture the clipboard is empty, so that no other picture is taken for this one.
    QGuiApplication::clipboard()->setImage(m_window ? pictureOf(*m_window, area) : QImage());
#endif
}

std::optional<std::string> QtScreen::clipboardPng() const
{
    auto const image = QGuiApplication::clipboard()->image();
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    if (image.isNull() || !image.save(&buffer, "PNG"))
        return std::nullopt;
    return buffer.data().toStdString();
}

} // namespace tensio
