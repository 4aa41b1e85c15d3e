#include "app/Application.h"
#include "support/PseudoTerminal.h"
#include "support/RuntimeFolder.h"

#include <QApplication>
#include <QFileInfo>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QTimer>

#include <chrono>
#include <gtest/gtest.h>

using namespace tensio;

namespace {

// What the program as it is started finds: a terminal published as the device, and no settings.
class Surroundings {
public:
    PseudoTerminal terminal;

    Surroundings()
    {
        setSettingsPath(m_folder.path());
        m_folder.publish(terminal.path(), QStringLiteral("x"));
    }
    Surroundings(Surroundings const&) = delete;
    Surroundings& operator=(Surroundings const&) = delete;
    ~Surroundings() { setSettingsPath(m_settingsBefore); }

private:
    static void setSettingsPath(QString const& path)
    {
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, path);
    }

    RuntimeFolder m_folder;
    QString m_settingsBefore {QFileInfo(
        QSettings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("tensio")).fileName())
                                  .path()};
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
        Surroundings surroundings;
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
                EXPECT_EQ(surroundings.terminal.hasReader(), isMeasuring) << moment;
                window.close();
            } else if (isDialogOpen && !manager.connectAction.isExecuting()) {
                input(window, "nameInput").setText(QStringLiteral("山田"));
                click(window, "okButton");
            } else if (!manager.isMeasuring.value()) {
                click(window, "startButton");
            } else if (!isDialogOpen) {
                surroundings.terminal.write("+0101a");
            }
        });
        user.start(1);
        // A moment that never comes.
        QTimer::singleShot(std::chrono::seconds(30), &user, [] { QApplication::exit(1); });
        EXPECT_EQ(QApplication::exec(), 0) << moment;
        EXPECT_FALSE(surroundings.terminal.hasReader()) << moment;
    }
}
