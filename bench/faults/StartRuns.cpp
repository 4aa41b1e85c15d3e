#include "support/Program.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <unistd.h>

using namespace tensio;

// As Qt does when the X server has gone.
TEST(StartRuns, ALibraryThatEndsTheProcessLeavesNoLockOfThePort)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    static std::string lock;
    auto const measureAndExit = [] {
        std::atexit(
            [] { std::fputs(access(lock.c_str(), F_OK) == 0 ? "locked" : "free", stderr); });
        Program program;
        bool const isConnected = program.connect();
        program.folder.remove();
        auto const terminal = program.terminal->path();
        lock = "/var/lock/LCK..pts_" + terminal.substr(terminal.rfind('/') + 1);
        std::exit(isConnected && access(lock.c_str(), F_OK) == 0 ? 3 : 1);
    };
    EXPECT_EXIT(measureAndExit(), testing::ExitedWithCode(3), "free");
}
