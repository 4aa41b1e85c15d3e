#include "support/AllocationCount.h"
#include "support/Desk.h"

#include <QPixmapCache>

#include <gtest/gtest.h>

using namespace tensio;

namespace {

// A press every 600 records, which a silence ends or not. From the second hour on, when the list is
// full, nothing but the arrays of readings may grow.
void passEightHours(double silenceSeconds, std::ptrdiff_t bytesPerReading)
{
    // It drops what has not been used for half a minute of real time.
    QPixmapCache::setCacheLimit(0);
    Desk desk;
    desk.window.setMinimumSize(0, 0);
    desk.window.resize(104, 69);
    desk.connect();
    constexpr int recordsPerHour = 3600 * 20;
    std::ptrdiff_t firstBlocks = 0;
    std::ptrdiff_t firstBytes = 0;
    for (int hour = 1; hour <= 8; ++hour) {
        for (int record = 0; record < recordsPerHour; ++record) {
            desk.receive({record % 600 < 500 ? 20.0 + record % 25 : 0.0});
            desk.runLoop.advance(Seconds(0.05 + (record % 600 == 599 ? silenceSeconds : 0.0)));
            if (record % 600 == 599)
                QCoreApplication::processEvents();
        }
        // Long enough for what is held back by a throttle, too short to end a burst.
        desk.runLoop.advance(Seconds(0.6));
        QCoreApplication::processEvents();
        if (hour == 1) {
            firstBlocks = liveBlocks;
            firstBytes = liveBytes;
        }
        // An hour has 120 presses; what Qt keeps of texts and glyphs varies a little.
        EXPECT_LE(liveBlocks - firstBlocks, 50) << "hour " << hour;
    }
    // Arrays grow by doubling; a sweep's place among the readings is 16 bytes in 600 readings.
    EXPECT_LE(liveBytes - firstBytes, (2 * bytesPerReading + 1) * 8 * recordsPerHour);
}

} // namespace

TEST(EightHours, GrowByTheReadingsOnlyAlsoInOneLongBurst)
{
    passEightHours(2.5, sizeof(float));
    passEightHours(0.0, 2 * sizeof(float));
}
