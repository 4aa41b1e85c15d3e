#include "support/Program.h"

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>

#include <chrono>
#include <csignal>
#include <gtest/gtest.h>

using namespace tensio;

TEST(Program, EndsWithItsWindowOrWhenAskedClosesThePortAndKeepsTheSession)
{
    for (std::string const moment :
        {"idle", "dialog open", "measuring", "asked to end", "panel open", "logging out"}) {
        SCOPED_TRACE(moment);
        Program program;
        QTimer::singleShot(0, &program.window(), [&] {
            if (moment == "dialog open")
                click(program.window(), "startButton");
            else if (moment != "idle" && moment != "panel open") {
                EXPECT_TRUE(program.connect() && program.press());
            }
            if (moment == "asked to end" || moment == "panel open")
                QTimer::singleShot(0, &program.window(), [] { raise(SIGTERM); });
            else if (moment != "logging out")
                program.window().close();
            else if (QGenericArgument const any("QSessionManager&", &program);
                     QMetaObject::invokeMethod(qApp, "commitDataRequest", any))
                QApplication::exit(program.manager().isMeasuring.value() ? 2 : 0);
            if (moment == "panel open")
                program.manager().saveScreenshotAction.apply(Nothing {});
        });
        QTimer const patience;
        QTimer::singleShot(std::chrono::seconds(10), &patience, [] { QApplication::exit(1); });
        ASSERT_EQ(QApplication::exec(), 0);
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
    for (auto const& file : {"tensio/tensio.ini", "tensio/tensio/sessions.db"})
        EXPECT_TRUE(QFile::exists(program.folder.filePath(file))) << file;
    QTimer::singleShot(0, [&] {
        auto const& panel = *QApplication::activeModalWidget();
        find<QLineEdit>(panel, "fileNameEdit").setText(program.folder.filePath("picture"));
        auto& save = *find<QDialogButtonBox>(panel).button(QDialogButtonBox::Save);
        EXPECT_TRUE(save.text().startsWith(u"保存"));
        save.click();
    });
    program.manager().saveScreenshotAction.apply(Nothing {});
    EXPECT_FALSE(QImage(program.folder.filePath("picture.png")).isNull());
}
