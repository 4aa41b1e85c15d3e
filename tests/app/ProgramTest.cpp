#include "support/Program.h"

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>

#include <chrono>
#include <csignal>
#include <gtest/gtest.h>
#include <unistd.h>

using namespace tensio;

TEST(Program, EndsWithItsWindowOrWhenAskedClosesThePortAndKeepsTheSession)
{
    using Moment = std::function<void(Program&)>;
    auto const measure
        = [](Program& program) { EXPECT_TRUE(program.connect() && program.press()); };
    auto const close = [](Program& program) { program.window().close(); };
    std::vector<std::tuple<char const*, Moment, Moment>> const moments {
        {"idle", [](Program&) {}, close},
        {"dialog open", [](Program& program) { click(program.window(), "startButton"); }, close},
        {"measuring", measure, close},
        {"measuring, asked to end", measure, [](Program&) { raise(SIGTERM); }},
        {"panel open, asked to end",
            [](Program& program) {
                QTimer::singleShot(0, &program.window(), [] { raise(SIGHUP); });
                program.manager().saveScreenshotAction.apply(Nothing {});
            },
            [](Program&) {}},
        {"measuring, logging out", measure,
            [](Program& program) {
                QMetaObject::invokeMethod(
                    qApp, "commitDataRequest", QGenericArgument("QSessionManager&", &program));
                EXPECT_FALSE(program.manager().isMeasuring.value());
                QApplication::exit();
            }},
    };
    for (auto const& [moment, begin, end] : moments) {
        SCOPED_TRACE(moment);
        Program program;
        QTimer::singleShot(0, &program.window(), [&, begin = begin, end = end] {
            begin(program);
            end(program);
        });
        QTimer const patience;
        QTimer::singleShot(std::chrono::seconds(30), &patience, [] { QApplication::exit(1); });
        EXPECT_EQ(QApplication::exec(), 0);
        EXPECT_FALSE(program.terminal->hasReader());
        bool const isMeasured = program.manager().measurement != nullptr;
        program.started.reset();
        EXPECT_EQ(QtSessionStore().unsavedSession().has_value(), isMeasured);
    }
}

TEST(Program, KeepsItsFilesUnderItsNameAndSavesAPictureOfItsWindow)
{
    Program program;
    program.manager().setTargetPressure(55);
    for (auto const& file :
        {QStringLiteral("tensio/tensio.ini"), QStringLiteral("tensio/tensio/sessions.db")})
        EXPECT_TRUE(QFile::exists(program.folder.filePath(file))) << file.toStdString();
    QTimer::singleShot(0, [&] {
        auto const& panel = *QApplication::activeModalWidget();
        find<QLineEdit>(panel, "fileNameEdit")
            .setText(program.folder.filePath(QStringLiteral("picture")));
        find<QDialogButtonBox>(panel).button(QDialogButtonBox::Save)->click();
    });
    program.manager().saveScreenshotAction.apply(Nothing {});
    EXPECT_FALSE(QImage(program.folder.filePath(QStringLiteral("picture.png"))).isNull());
}

TEST(Program, FreesThePortWhenALibraryEndsTheProcess)
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
