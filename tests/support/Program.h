#pragma once

#include "app/Startup.h"
#include "device-simulator/Terminal.h"
#include "support/RuntimeFolder.h"
#include "support/Ui.h"

#include <QApplication>
#include <QMessageBox>
#include <QSettings>
#include <QTest>
#include <QTimer>

#include <memory>
#include <optional>

namespace tensio {

// The program as it is started, with a terminal published as the device, no settings and no stored
// sessions. Alerts are noted and closed.
class Program {
public:
    RuntimeFolder folder;
    std::optional<Terminal> terminal;
    SystemClock clock;
    std::unique_ptr<StartedProgram> started;
    QStringList alerts;

    Program()
    {
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder.path());
        qputenv("XDG_DATA_HOME", QFile::encodeName(folder.path()));
        plugIn();
        started = startProgram(*qApp, clock);
        QObject::connect(&m_user, &QTimer::timeout, [this] {
            if (auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                alerts << box->text();
                box->close();
            }
        });
        m_user.start(1);
    }

    TensioManager& manager() const { return started->application.tensioManager(); }
    MainWindow& window() const { return started->application.window(); }

    // In place of the terminal before.
    void plugIn() { terminal.emplace("SLAB_USBtoUART-x"); }

    bool connect() const
    {
        manager().connectAction.apply(Nothing {});
        return QTest::qWaitFor([&] { return terminal->hasReader(); });
    }

    // Two records and the beginning of one.
    bool press() const
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
