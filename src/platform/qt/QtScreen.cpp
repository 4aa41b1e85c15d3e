#include "platform/qt/QtScreen.h"

#include "platform/CaptureRectangle.h"

#include <QBuffer>
#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QProcess>
#include <QScreen>
#include <QWidget>

namespace tensio {

ScreenRect QtScreen::mainWindowFrame() const
{
    if (!m_window)
        return {};
    // Qt's coordinates begin at the corner of all screens together.
    auto const origin = QGuiApplication::primaryScreen()->geometry().topLeft();
    QRectF const frame = m_window->frameGeometry().translated(-origin);
    return {
        frame.x(), mainScreenHeight() - frame.y() - frame.height(), frame.width(), frame.height()};
}

double QtScreen::mainScreenHeight() const
{
    return QGuiApplication::primaryScreen()->geometry().height();
}

void QtScreen::captureToClipboard(ScreenRect const& area)
{
#ifdef Q_OS_MACOS
    QProcess::execute(QStringLiteral("/usr/sbin/screencapture"),
        {QStringLiteral("-c"), QStringLiteral("-R"),
            QString::fromStdString(captureRectangle(area))});
#else
    QPixmap picture;
    if (QGuiApplication::platformName() == QStringLiteral("xcb")) {
        auto const rect = QRectF(area.x, area.y, area.width, area.height).toAlignedRect();
        picture = QGuiApplication::primaryScreen()->grabWindow(
            0, rect.x(), rect.y(), rect.width(), rect.height());
    }
    if (picture.isNull() && m_window)
        picture = m_window->grab();
    // Without a picture the clipboard is empty, so that no other picture is taken for this one.
    QGuiApplication::clipboard()->setImage(picture.toImage());
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
