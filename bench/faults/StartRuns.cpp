#include "support/Program.h"

#include <QProcess>
#include <QTemporaryDir>

#include <cstdlib>
#include <gtest/gtest.h>
#include <unistd.h>

using namespace tensio;

TEST(StartRuns, NeitherFontsNorAHomeAreNeededToStart)
{
    QTemporaryDir const home;
    for (auto const& path : {home.path(), QString("/nowhere")}) {
        auto environment = QProcessEnvironment::systemEnvironment();
        for (auto const* name : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR"})
            environment.insert(name, path);
        environment.insert("FONTCONFIG_FILE", "/dev/null");
        QProcess program;
        program.setProcessEnvironment(environment);
        program.start(TENSIO_PROGRAM, {});
        // A second is plenty for what could make it refuse.
        EXPECT_TRUE(program.waitForStarted() && !program.waitForFinished(1000))
            << path.toStdString();
        program.kill();
        program.waitForFinished();
    }
}

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
