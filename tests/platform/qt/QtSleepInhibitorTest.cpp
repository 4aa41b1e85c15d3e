#include "platform/qt/QtSleepInhibitor.h"

#include <QDBusMessage>
#include <QDBusServer>
#include <QDBusVirtualObject>
#include <QTest>

#include <gtest/gtest.h>

using namespace tensio;

namespace {

struct ScreenSaver : QDBusVirtualObject {
    QString log;
    uint granted = 0;

    QString introspect(QString const& /*path*/) const override { return {}; }
    bool handleMessage(QDBusMessage const& call, QDBusConnection const& client) override
    {
        log += call.member() == "Inhibit" ? "+"
                                          : "-" + QString::number(call.arguments()[0].toUInt());
        return client.send(
            call.member() == "Inhibit" ? call.createReply(++granted) : call.createReply());
    }
    bool hearsReleases(qsizetype count) const
    {
        return QTest::qWaitFor([&] { return log.startsWith("++") && log.count('-') == count; });
    }
};

} // namespace

TEST(QtSleepInhibitor, ReleasesWhatItWasGrantedEvenWhenTheAnswerComesLate)
{
    ScreenSaver screenSaver;
    QDBusServer server("unix:tmpdir=/tmp");
    bool isReady = false;
    QObject::connect(&server, &QDBusServer::newConnection, [&](QDBusConnection client) {
        isReady = client.registerVirtualObject("/org/freedesktop/ScreenSaver", &screenSaver);
    });
    auto const bus = [&] { return QDBusConnection::connectToPeer(server.address(), "bus"); };
    ASSERT_TRUE(bus().isConnected() && QTest::qWaitFor([&] { return isReady; }));
    QtSleepInhibitor inhibitor(bus, bus);
    for (bool const isInhibited : {true, true, false, true})
        inhibitor.setInhibited(isInhibited);
    EXPECT_TRUE(screenSaver.hearsReleases(1));
    inhibitor.setInhibited(false);
    EXPECT_TRUE(screenSaver.hearsReleases(2));
    // Which of the two requests is answered first is up to the bus.
    EXPECT_TRUE(screenSaver.log == "++-1-2" || screenSaver.log == "++-2-1");
    QDBusConnection::disconnectFromPeer("bus");
}
