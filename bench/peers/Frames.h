#pragma once

#include <QApplication>
#include <QWidget>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <vector>

// One reading a frame on a shown widget of 700 x 400: the same for every library. Compiled with
// Qt 5 as well, which is why it uses nothing of tensio.
namespace peers {

constexpr QSize widgetSize(700, 400);
constexpr int pointsPerSweep = 600;
constexpr double secondsPerSweep = 30.0;
constexpr double secondsBetweenPoints = secondsPerSweep / pointsPerSweep;
constexpr double highestPressure = 80.0; // kPa
constexpr double lineWidth = 5.0;

// Pressed for 3.5 s, released for 2 s, in kPa.
inline double pressing(int index)
{
    return index % 110 < 70 ? 35.0 + 2.0 * std::sin(index) : 0.0;
}

inline double processorMilliseconds()
{
    timespec time {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

inline void show(QWidget& widget)
{
    widget.resize(widgetSize);
    widget.show();
    QCoreApplication::processEvents();
}

// Prints the name and the median frame in milliseconds of processor time. `addReading` takes the
// index of a point in the running sweep and asks for a repaint.
template<typename AddReading>
void timeFrames(char const* name, AddReading addReading, int frames = pointsPerSweep)
{
    std::vector<double> times;
    for (int index = 0; index < frames; ++index) {
        auto const begin = processorMilliseconds();
        addReading(index);
        QCoreApplication::sendPostedEvents();
        times.push_back(processorMilliseconds() - begin);
    }
    auto const median = times.begin() + frames / 2;
    std::nth_element(times.begin(), median, times.end());
    std::printf("%s\t%.4f\n", name, *median);
}

} // namespace peers
