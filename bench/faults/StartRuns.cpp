#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

TEST(StartRuns, NeitherFontsNorAHomeAreNeededToStart)
{
    QTemporaryDir const home;
    struct Row {
        QString home;
        QString fonts;
    };
    for (auto const& [homePath, fonts] : std::vector<Row> {
             {home.path(), QStringLiteral("/dev/null")}, {QStringLiteral("/nowhere"), QString()}}) {
        auto environment = QProcessEnvironment::systemEnvironment();
        for (auto const* variable : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR"})
            environment.insert(QString::fromLatin1(variable), homePath);
        if (!fonts.isEmpty())
            environment.insert(QStringLiteral("FONTCONFIG_FILE"), fonts);
        QProcess program;
        program.setProcessEnvironment(environment);
        program.start(QStringLiteral(TENSIO_PROGRAM), {});
        // A second is plenty for what could make it refuse.
        EXPECT_TRUE(program.waitForStarted() && !program.waitForFinished(1000))
            << homePath.toStdString();
        program.kill();
        program.waitForFinished();
    }
}
