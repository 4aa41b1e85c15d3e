#include "app/MainWindowController.h"
#include "feedback/GraphView.h"
#include "support/AllocationCount.h"
#include "support/Session.h"

#include <QCoreApplication>
#include <QPixmapCache>

#include <gtest/gtest.h>

using namespace tensio;

namespace {

constexpr int recordsPerSecond = 20;
constexpr int recordsPerHour = 3600 * recordsPerSecond;
constexpr int hours = 8;

// What must stay the same from one hour to the next. The pictures of the sweeps are not in it; they
// have the window's size.
struct Inventory {
    std::ptrdiff_t blocks = 0;
    std::size_t timers = 0;
    qsizetype objects = 0;

    bool operator==(Inventory const&) const = default;
    friend std::ostream& operator<<(std::ostream& out, Inventory const& inventory)
    {
        return out << inventory.blocks << " blocks, " << inventory.timers << " timers, "
                   << inventory.objects << " objects";
    }
};

struct Day {
    Session session;
    FakeAlerts alerts;
    MainWindowController controller {session.manager, session.runLoop, alerts};
    int records = 0;

    Day()
    {
        // It drops what has not been used for half a minute of real time.
        QPixmapCache::setCacheLimit(0);
        // Small, so that painting it costs little.
        controller.window().resize(104, 69);
        controller.window().show();
        session.connect();
    }

    Plotter& plotter() { return *controller.window().findChild<GraphView*>()->plotter(); }

    // A press every 600 records; a silence ends it or not.
    void passAnHour(bool isSilentInBetween)
    {
        for (int end = records + recordsPerHour; records < end;) {
            auto const place = records % 600;
            session.receive({place < 500 ? 20.0 + place % 25 : 0.0});
            session.runLoop.advance(Seconds(1.0 / recordsPerSecond));
            if (++records % 600 == 0) {
                if (isSilentInBetween)
                    session.runLoop.advance(Seconds(2.5));
                QCoreApplication::processEvents();
            }
        }
    }

    Inventory inventory()
    {
        // Long enough for what is held back by a throttle, too short to end a burst.
        session.runLoop.advance(Seconds(0.6));
        QCoreApplication::processEvents();
        return {liveBlocks, session.runLoop.liveTimers(),
            controller.window().findChildren<QObject*>().size()};
    }
};

// From the second hour on, when the list is full, nothing but the readings may grow.
void passEightHours(Day& day, bool isSilentInBetween, std::ptrdiff_t bytesPerReading)
{
    day.passAnHour(isSilentInBetween);
    auto const inventory = day.inventory();
    auto const bytes = liveBytes;
    for (int hour = 2; hour <= hours; ++hour) {
        day.passAnHour(isSilentInBetween);
        EXPECT_EQ(day.inventory(), inventory) << "hour " << hour;
    }
    // Arrays grow by doubling; a sweep's place among the readings is 16 bytes in 600 readings.
    auto const readings = static_cast<std::ptrdiff_t>(hours) * recordsPerHour;
    EXPECT_LE(liveBytes - bytes, 2 * readings * bytesPerReading + readings);
    EXPECT_EQ(day.plotter().pressurePoints().size(), static_cast<std::size_t>(readings));
}

} // namespace

TEST(EightHours, HoldTheFirst99MeasurementsAndNothingElseThatGrows)
{
    Day day;
    passEightHours(day, true, sizeof(float));

    auto const& measurements = day.session.manager.measurementList.measurements();
    ASSERT_EQ(measurements.size(), 99U);
    for (std::size_t index = 0; index < measurements.size(); ++index) {
        EXPECT_EQ(measurements[index]->number, static_cast<int>(index) + 1);
        EXPECT_EQ(measurements[index]->pressurePoints->size(), 600U);
        EXPECT_EQ(measurements[index]->bestPressure, 44.0f);
    }
    EXPECT_EQ(day.session.manager.measurement->number, hours * recordsPerHour / 600 + 1);
    EXPECT_TRUE(day.session.manager.measurement->pressurePoints->empty());
}

TEST(EightHours, MayBeOneBurst)
{
    Day day;
    passEightHours(day, false, 2 * sizeof(float));

    EXPECT_TRUE(day.session.manager.measurementList.measurements().empty());
    day.session.manager.disconnectAction.apply(Nothing {});
    auto const& measurements = day.session.manager.measurementList.measurements();
    ASSERT_EQ(measurements.size(), 1U);
    EXPECT_EQ(measurements.front()->pressurePoints->size(),
        static_cast<std::size_t>(hours * recordsPerHour));
    EXPECT_EQ(measurements.front()->bestPressure, 44.0f);
}
