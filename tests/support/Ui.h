#pragma once

#include <QAbstractButton>
#include <QImage>
#include <QLabel>
#include <QMessageBox>
#include <QTest>

#include <gtest/gtest.h>

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

// That of the message that is shown now or soon, and is closed.
inline QString closedMessage(QObject const& window)
{
    EXPECT_TRUE(QTest::qWaitFor([&] { return window.findChild<QMessageBox*>() != nullptr; }));
    auto text = find<QMessageBox>(window).text();
    delete window.findChild<QMessageBox*>();
    return text;
}

inline void click(QObject const& window, char const* name)
{
    find(window, name).click();
}

// Where two pictures of one size differ, in their pixels.
inline QRect difference(QImage const& picture, QImage const& other)
{
    QRect area;
    for (int at = 0; at < picture.width() * picture.height(); ++at) {
        QPoint const place(at % picture.width(), at / picture.width());
        if (picture.pixel(place) != other.pixel(place))
            area |= QRect(place, QSize(1, 1));
    }
    return area;
}

} // namespace tensio
