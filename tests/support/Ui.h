#pragma once

#include <QAbstractButton>

namespace tensio {

// Objects of a window by their names; without a name the only one of its class.
template<typename T = QAbstractButton>
T& find(QObject const& window, char const* name = nullptr)
{
    return *window.findChild<T*>(QString::fromLatin1(name));
}

inline void click(QObject const& window, char const* name)
{
    find(window, name).click();
}

} // namespace tensio
