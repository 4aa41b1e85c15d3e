#include "device-simulator/PressingStory.h"
#include "platform/qt/QtAlerts.h"
#include "support/Clinic.h"

#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include <gtest/gtest.h>

using namespace tensio;

TEST(Panel, HoldsBackWhatArrivesAndDeliversItInOrderOnceItCloses)
{
    Clinic clinic;
    QtAlerts alerts(clinic.queue);
    ASSERT_TRUE(clinic.connect());
    std::string log;
    // Opened in the middle of a delivery, from where the port tells its reader of bytes.
    auto const observing
        = clinic.session.manager.serialPortManager.pressure.observeChanges([&](float pressure) {
              log += std::to_string(std::lround(pressure)) + " ";
              if (pressure == 10.0f) {
                  alerts.runModal(AlertStyle::Warning, "開く", {"OK"});
                  log += "closed ";
              }
          });
    QTimer user;
    int next = 20;
    QObject::connect(&user, &QTimer::timeout, [&] {
        auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box || clinic.watch.unread() > 0)
            return;
        if (next == 50)
            box->buttons().constFirst()->click();
        else
            clinic.session.terminal.write(deviceRecord(std::exchange(next, next + 10)));
    });
    user.start(1);
    clinic.session.terminal.write("+0100a+0110b");
    ASSERT_TRUE(QTest::qWaitFor([&] { return log.ends_with("40 "); })) << log;
    EXPECT_EQ(log, "10 closed 11 20 30 40 ");
}
