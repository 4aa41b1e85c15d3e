#include "app/Application.h"
#include "support/PseudoTerminal.h"
#include "support/RuntimeFolder.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QSettings>
#include <QTest>
#include <QTimer>

#include <chrono>
#include <gtest/gtest.h>

using namespace tensio;

namespace {

// The program as it is started, with a terminal published as the device and no settings.
struct Program {
    RuntimeFolder folder;
    PseudoTerminal terminal;
    std::unique_ptr<Application> application;

    Program()
    {
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder.path());
        folder.publish(terminal.path(), QStringLiteral("x"));
        application = std::make_unique<Application>();
        application->window().show();
    }

    TensioManager& manager() const { return application->tensioManager(); }

    void click(char const* name) const
    {
        application->window().findChild<QAbstractButton*>(QString::fromLatin1(name))->click();
    }

    void measure() const
    {
        click("startButton");
        application->window()
            .findChild<QLineEdit*>(QStringLiteral("nameInput"))
            ->setText(u"山田"_qs);
        click("okButton");
        EXPECT_TRUE(QTest::qWaitFor([&] { return !manager().isShowingPopup.value(); }));
        terminal.write("+0101a+0202b+03");
        EXPECT_TRUE(QTest::qWaitFor([&] { return manager().maxPressure.value() == 20.2f; }));
        EXPECT_TRUE(terminal.hasReader());
    }
};

} // namespace

TEST(Program, EndsWithItsWindowAndClosesThePort)
{
    for (std::string const moment : {"idle", "dialog open", "measuring"}) {
        Program const program;
        QTimer::singleShot(0, &program.application->window(), [&] {
            if (moment == "dialog open")
                program.click("startButton");
            else if (moment == "measuring")
                program.measure();
            program.application->window().close();
        });
        // Else it would go on for ever.
        QTimer const patience;
        QTimer::singleShot(std::chrono::seconds(30), &patience, [] { QApplication::exit(1); });
        EXPECT_EQ(QApplication::exec(), 0) << moment;
        EXPECT_FALSE(program.terminal.hasReader()) << moment;
    }
}

TEST(Program, ReportsAPulledCableOnceAndKeepsWhatWasMeasured)
{
    Program program;
    program.measure();
    QStringList alerts;
    QTimer user;
    QObject::connect(&user, &QTimer::timeout, [&] {
        if (auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            alerts << box->text();
            box->close();
        }
    });
    user.start(1);
    program.terminal.unplug();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !alerts.isEmpty(); }));
    // Longer than the polling for a line that hung up.
    EXPECT_FALSE(QTest::qWaitFor([&] { return alerts.size() > 1; }, 300));
    EXPECT_EQ(alerts, QStringList(u"切断されました。"_qs));
    EXPECT_FALSE(program.manager().isMeasuring.value());
    auto const& measurements = program.manager().measurementList.measurements();
    ASSERT_EQ(measurements.size(), 1U);
    EXPECT_EQ(measurements.front()->pressurePoints, (std::vector {10.1f, 20.2f}));
}
