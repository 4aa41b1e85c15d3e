#pragma once

#include <QApplication>
#include <QString>

#include <cstdint>
#include <vector>

namespace tensio {

// Notes when each record has reached the screen: the end of the first repaint after it arrived.
class LatencyMeter : public QApplication {
    Q_OBJECT

public:
    using QApplication::QApplication;

    void recordArrived() { ++m_arrived; }
    bool notify(QObject* receiver, QEvent* event) override;

    // 95th percentile in milliseconds against the times (nanoseconds of the monotonic clock, one a
    // line) at which the records were written to the terminal. Throws DemoFailure when there are
    // none.
    double percentile95(QString const& stampsFile) const;

private:
    std::size_t m_arrived = 0;
    std::vector<std::int64_t> m_shownAt;
};

} // namespace tensio
