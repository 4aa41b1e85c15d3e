#pragma once

#include "app/Application.h"
#include "app/QtServices.h"
#include "device-simulator/Terminal.h"
#include "support/RuntimeFolder.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QSettings>
#include <QTest>
#include <QTimer>

#include <optional>

namespace tensio {

// The program as it is started, with a terminal published as the device, no settings and no stored
// sessions. Alerts are noted and closed.
class Program {
public:
    RuntimeFolder folder;
    std::unique_ptr<Terminal> terminal;
    std::optional<QtServices> services;
    std::optional<Application> application;
    QStringList alerts;

    Program()
    {
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder.path());
        qputenv("XDG_DATA_HOME", QFile::encodeName(folder.path()));
        plugIn();
        application.emplace(services.emplace().services());
        application->window().show();
        QObject::connect(&m_user, &QTimer::timeout, [this] {
            if (auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                alerts << box->text();
                box->close();
            }
        });
        m_user.start(1);
    }

    TensioManager& manager() { return application->tensioManager(); }

    // Leaves the store to others.
    void end()
    {
        application.reset();
        services.reset();
    }

    // In place of the terminal before.
    void plugIn()
    {
        terminal.reset();
        terminal = std::make_unique<Terminal>(QStringLiteral("SLAB_USBtoUART-x"));
    }

    void click(char const* name)
    {
        application->window().findChild<QAbstractButton*>(QString::fromLatin1(name))->click();
    }

    // By hand, through the dialog.
    bool connect()
    {
        click("startButton");
        application->window()
            .findChild<QLineEdit*>(QStringLiteral("nameInput"))
            ->setText(QStringLiteral("山田"));
        click("okButton");
        return QTest::qWaitFor(
            [&] { return manager().isMeasuring.value() && !manager().isShowingPopup.value(); });
    }

    // Two records and the beginning of one.
    bool press()
    {
        terminal->write("+0101a+0202b+03");
        return QTest::qWaitFor([&] { return manager().maxPressure.value() == 20.2f; });
    }

    bool pull()
    {
        alerts.clear();
        terminal.reset();
        return QTest::qWaitFor([&] { return !alerts.isEmpty(); });
    }

private:
    QTimer m_user;
};

} // namespace tensio
