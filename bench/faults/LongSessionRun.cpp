#include "Figure.h"
#include "core/NumberFormat.h"
#include "device-simulator/PressingStory.h"
#include "feedback/GraphView.h"
#include "feedback/VisualFeedbackViewController.h"
#include "support/Process.h"
#include "support/Session.h"

#include <QElapsedTimer>

#include <algorithm>
#include <gtest/gtest.h>

using namespace tensio;

namespace {

double median(std::vector<qint64> times)
{
    std::ranges::sort(times);
    return times.empty() ? 0.0 : static_cast<double>(times[times.size() / 2]) / 1e6;
}

} // namespace

TEST(LongSession, EightHoursOfOneBurstCostWhatTheyCostAtTheStart)
{
    constexpr int records = 8 * 3600 * 20;
    Session session;
    QWidget view;
    VisualFeedbackViewController controller(session.manager, session.runLoop, view);
    controller.viewWillAppear();
    session.connect();
    auto& graph = *view.findChild<GraphView*>();
    std::vector<qint64> early;
    std::vector<qint64> late;
    std::size_t timers = 0;
    long memory = 0;
    for (int record = 0; record < records; ++record) {
        session.port->delegate->serialPortDidReceiveData(deviceRecord(20.0 + record % 37));
        session.runLoop.advance(Seconds(0.05));
        // Frames from the second sweep on; the first fills the caches.
        if (record % 20 == 0 && record > 600) {
            QElapsedTimer timer;
            timer.start();
            graph.frame(QSize(524, 440));
            auto& times = record < records / 8 ? early : late;
            times.push_back(timer.nsecsElapsed());
        }
        if (record == records / 8) {
            timers = session.runLoop.liveTimers();
            memory = residentKilobytes();
        }
    }
    auto const perRecord
        = static_cast<double>(residentKilobytes() - memory) * 1024.0 / (records * 7.0 / 8.0);
    EXPECT_EQ(
        session.manager.measurement->pressurePoints->size(), static_cast<std::size_t>(records));
    EXPECT_EQ(session.runLoop.liveTimers(), timers);
    EXPECT_LT(median(late), 2.0 * median(early));
    // A reading of four bytes stands in the measurement and in the graph; vectors grow by doubling.
    EXPECT_LT(perRecord, 4.0 * 2.0 * 3.0);
    report(std::to_string(records) + " records; a frame "
        + formatFixed(static_cast<float>(median(early)), 3) + " ms in the first hour, "
        + formatFixed(static_cast<float>(median(late)), 3) + " ms later; "
        + formatFixed(static_cast<float>(perRecord), 1) + " bytes a record, "
        + std::to_string(session.runLoop.liveTimers() - timers) + " timers more");
}
