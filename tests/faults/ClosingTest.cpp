#include "app/Application.h"
#include "platform/qt/VirtualPorts.h"
#include "support/PseudoTerminal.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QTimer>

#include <gtest/gtest.h>

using namespace tensio;

namespace {

// The program as it is started, with a terminal published as the device.
struct Program {
    QTemporaryDir folder;
    PseudoTerminal terminal;

    Program()
    {
        QFile::setPermissions(
            folder.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        qputenv("XDG_RUNTIME_DIR", folder.path().toLocal8Bit());
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder.path());
        QDir().mkpath(virtualPortsFolder());
        QFile::link(QString::fromStdString(terminal.path()),
            virtualPortsFolder() + QStringLiteral("/SLAB_USBtoUART-x"));
    }
};

QWidget* find(QWidget const& window, char const* name)
{
    return window.findChild<QWidget*>(QString::fromLatin1(name));
}

QLineEdit& input(QWidget const& window, char const* name)
{
    return dynamic_cast<QLineEdit&>(*find(window, name));
}

void click(QWidget const& window, char const* name)
{
    dynamic_cast<QPushButton&>(*find(window, name)).click();
}

} // namespace

TEST(Closing, TheWindowEndsTheProgramAndClosesThePort)
{
    for (std::string const moment : {"idle", "dialog open", "measuring"}) {
        Program program;
        Application application;
        auto& window = application.window();
        auto& manager = application.tensioManager();
        window.show();
        // What a user does next, given what is on the screen.
        QTimer user;
        QObject::connect(&user, &QTimer::timeout, [&] {
            bool const isMeasuring = manager.currentPressure.value() > 0.0f;
            bool const isDialogOpen = manager.isShowingPopup.value();
            if (moment == "idle" || (moment == "dialog open" && isDialogOpen) || isMeasuring) {
                EXPECT_EQ(program.terminal.hasReader(), isMeasuring) << moment;
                window.close();
            } else if (isDialogOpen && !manager.connectAction.isExecuting()) {
                input(window, "nameInput").setText(QStringLiteral("山田"));
                click(window, "okButton");
            } else if (!manager.isMeasuring.value()) {
                click(window, "startButton");
            } else if (!isDialogOpen) {
                program.terminal.write("+0101a");
            }
        });
        user.start(1);
        EXPECT_EQ(QApplication::exec(), 0) << moment;
        EXPECT_FALSE(program.terminal.hasReader()) << moment;
    }
}
