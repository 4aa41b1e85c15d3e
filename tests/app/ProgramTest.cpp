#include "support/Program.h"

#include <chrono>
#include <gtest/gtest.h>

using namespace tensio;

TEST(Program, EndsWithItsWindowClosesThePortAndKeepsTheSession)
{
    for (std::string const moment : {"idle", "dialog open", "measuring"}) {
        Program program;
        QTimer::singleShot(0, &program.application->window(), [&] {
            if (moment == "dialog open") {
                program.click("startButton");
            } else if (moment == "measuring") {
                EXPECT_TRUE(program.connect() && program.press() && program.terminal->hasReader());
            }
            program.application->window().close();
        });
        // Else it would go on for ever.
        QTimer const patience;
        QTimer::singleShot(std::chrono::seconds(30), &patience, [] { QApplication::exit(1); });
        EXPECT_EQ(QApplication::exec(), 0) << moment;
        EXPECT_FALSE(program.terminal->hasReader()) << moment;
        program.end();
        EXPECT_EQ(QtSessionStore().unsavedSession().has_value(), moment == "measuring");
    }
}

TEST(Program, ReportsAPulledCableOnceAndKeepsWhatWasMeasured)
{
    Program program;
    ASSERT_TRUE(program.connect() && program.press());
    EXPECT_TRUE(program.pull());
    // Longer than the polling for a line that hung up.
    EXPECT_FALSE(QTest::qWaitFor([&] { return program.alerts.size() > 1; }, 300));
    EXPECT_EQ(program.alerts, QStringList(QStringLiteral("切断されました。")));
    EXPECT_FALSE(program.manager().isMeasuring.value());
    auto const& measurements = program.manager().measurementList.measurements();
    ASSERT_EQ(measurements.size(), 1U);
    EXPECT_EQ(measurements.front()->pressurePoints, (std::vector {10.1f, 20.2f}));
}
