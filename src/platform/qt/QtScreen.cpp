#include "platform/qt/QtScreen.h"

#include <QBuffer>
#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QLocale>
#include <QPixmap>
#include <QProcess>
#include <QScreen>
#include <QWidget>

namespace tensio {

namespace {

QRect readRectangle(std::string const& text)
{
    auto const numbers = QString::fromStdString(text).split(u',');
    auto const number = [&](int index) { return QLocale::c().toDouble(numbers.value(index)); };
    return QRectF(number(0), number(1), number(2), number(3)).toAlignedRect();
}

} // namespace

ScreenRect QtScreen::mainWindowFrame() const
{
    if (!m_window)
        return {};
    QRectF const frame = m_window->frameGeometry();
    return {
        frame.x(), mainScreenHeight() - frame.y() - frame.height(), frame.width(), frame.height()};
}

double QtScreen::mainScreenHeight() const
{
    return QGuiApplication::primaryScreen()->geometry().height();
}

void QtScreen::captureToClipboard(std::string const& rectangle)
{
#ifdef Q_OS_MACOS
    QProcess::execute(QStringLiteral("/usr/sbin/screencapture"),
        {QStringLiteral("-c"), QStringLiteral("-R"), QString::fromStdString(rectangle)});
#else
    QPixmap picture;
    if (QGuiApplication::platformName() == QStringLiteral("xcb")) {
        auto const rect = readRectangle(rectangle);
        picture = QGuiApplication::primaryScreen()->grabWindow(
            0, rect.x(), rect.y(), rect.width(), rect.height());
    }
    if (picture.isNull() && m_window)
        picture = m_window->grab();
    if (!picture.isNull())
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
