#include "demo/LatencyMeter.h"

#include "demo/Stage.h"

#include <QFile>

#include <algorithm>
#include <chrono>

namespace tensio {

bool LatencyMeter::notify(QObject* receiver, QEvent* event)
{
    bool const isRepaint = event->type() == QEvent::UpdateRequest;
    bool const result = QApplication::notify(receiver, event);
    if (isRepaint) {
        auto const now = std::chrono::steady_clock::now().time_since_epoch();
        m_shownAt.resize(
            m_arrived, std::chrono::duration_cast<std::chrono::nanoseconds>(now).count());
    }
    return result;
}

double LatencyMeter::percentile95(QString const& stampsFile) const
{
    QFile file(stampsFile);
    if (!file.open(QIODevice::ReadOnly))
        throw DemoFailure("no time stamps of the simulated device");
    std::vector<std::int64_t> latencies;
    for (auto const shownAt : m_shownAt) {
        bool isNumber = false;
        auto const writtenAt = file.readLine().trimmed().toLongLong(&isNumber);
        if (!isNumber)
            break;
        latencies.push_back(shownAt - writtenAt);
    }
    if (latencies.empty())
        throw DemoFailure("no record was shown");
    std::ranges::sort(latencies);
    return static_cast<double>(latencies[latencies.size() * 95 / 100]) / 1e6;
}

} // namespace tensio
