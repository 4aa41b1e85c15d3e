#include "support/Program.h"

#include <chrono>
#include <gtest/gtest.h>

using namespace tensio;

TEST(Program, EndsWithItsWindowClosesThePortAndKeepsTheSession)
{
    for (std::string const moment : {"idle", "dialog open", "measuring"}) {
        Program program;
        QTimer::singleShot(0, &program.application->window(), [&] {
            if (moment == "dialog open")
                click(program.application->window(), "startButton");
            else
                EXPECT_TRUE(moment == "idle" || (program.connect() && program.press()));
            program.application->window().close();
        });
        QTimer const patience;
        QTimer::singleShot(std::chrono::seconds(30), &patience, [] { QApplication::exit(1); });
        EXPECT_EQ(QApplication::exec(), 0) << moment;
        EXPECT_FALSE(program.terminal->hasReader()) << moment;
        program.application.reset();
        program.services.reset();
        EXPECT_EQ(QtSessionStore().unsavedSession().has_value(), moment == "measuring");
    }
}
