#pragma once

#include <QAbstractButton>
#include <QImage>
#include <QLabel>

namespace tensio {

// Objects of a window by their names; without a name the only one of its class.
template<typename T = QAbstractButton>
T& find(QObject const& window, char const* name = nullptr)
{
    return *window.findChild<T*>(QString::fromLatin1(name));
}

inline std::string textOf(QObject const& window, char const* label)
{
    return find<QLabel>(window, label).text().toStdString();
}

inline void click(QObject const& window, char const* name)
{
    find(window, name).click();
}

// The colour at a point of a picture, in the widget's units.
inline QColor colorAt(QImage const& picture, double x, double y)
{
    auto const ratio = picture.devicePixelRatio();
    return picture.pixelColor(
        static_cast<int>((x + 0.5) * ratio), static_cast<int>((y + 0.5) * ratio));
}

} // namespace tensio
