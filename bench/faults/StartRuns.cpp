#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

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
