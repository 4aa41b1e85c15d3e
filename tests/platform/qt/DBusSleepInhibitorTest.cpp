#include "platform/qt/DBusSleepInhibitor.h"

#include <QDBusMessage>
#include <QDBusServer>
#include <QDBusVirtualObject>
#include <QTest>

#include <gtest/gtest.h>

using namespace tensio;

namespace {

// The screen saver and the login manager.
struct Desktop : QDBusVirtualObject {
    QString log;
    uint granted = 0;

    QString introspect(QString const& /*path*/) const override { return {}; }
    bool handleMessage(QDBusMessage const& call, QDBusConnection const& client) override
    {
        if (call.member() == "UnInhibit") {
            log += "-" + QString::number(call.arguments()[0].toUInt());
            return client.send(call.createReply());
        }
        log += call.path().endsWith("login1") ? "L" : "+";
        return client.send(call.createReply(++granted));
    }
    bool hears(QStringList const& logs) const
    {
        return QTest::qWaitFor([&] { return logs.contains(log); });
    }
};

} // namespace

TEST(DBusSleepInhibitor, ReleasesWhatItWasGrantedEvenWhenTheAnswerComesLate)
{
    Desktop desktop;
    QDBusServer server("unix:tmpdir=/tmp");
    bool isReady = false;
    QObject::connect(&server, &QDBusServer::newConnection, [&](QDBusConnection client) {
        isReady
            = client.registerVirtualObject("/org/freedesktop", &desktop, QDBusConnection::SubPath);
    });
    auto const bus = [&] { return QDBusConnection::connectToPeer(server.address(), "bus"); };
    auto const none = [] { return QDBusConnection("none"); };
    ASSERT_TRUE(bus().isConnected() && QTest::qWaitFor([&] { return isReady; }));
    {
        DBusSleepInhibitor inhibitor(bus, none);
        for (bool const isInhibited : {true, true, false, true})
            inhibitor.setInhibited(isInhibited);
        // Which of the two requests is answered first is up to the bus.
        EXPECT_TRUE(desktop.hears({"++-1", "++-2"}));
    }
    EXPECT_TRUE(desktop.hears({"++-1-2", "++-2-1"}));
    DBusSleepInhibitor(none, none).setInhibited(true);
    DBusSleepInhibitor inhibitor(none, bus);
    inhibitor.setInhibited(true);
    EXPECT_TRUE(desktop.hears({"++-1-2L", "++-2-1L"})) << "without a screen saver";
    QDBusConnection::disconnectFromPeer("bus");
}
