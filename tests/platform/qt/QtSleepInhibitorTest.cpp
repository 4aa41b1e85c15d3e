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
    bool hears(char const* expected) const
    {
        return QTest::qWaitFor([&] { return log == expected; });
    }
};

} // namespace

TEST(QtSleepInhibitor, ReleasesWhatItWasGrantedEvenWhenTheAnswerComesLate)
{
    ScreenSaver screenSaver;
    QDBusServer server("unix:tmpdir=/tmp");
    QObject::connect(&server, &QDBusServer::newConnection, [&](QDBusConnection client) {
        client.registerVirtualObject("/org/freedesktop/ScreenSaver", &screenSaver);
    });
    auto const bus = [&] { return QDBusConnection::connectToPeer(server.address(), "bus"); };
    QtSleepInhibitor inhibitor(bus, bus);
    for (bool const isInhibited : {true, true, false, true})
        inhibitor.setInhibited(isInhibited);
    EXPECT_TRUE(screenSaver.hears("++-1"));
    inhibitor.setInhibited(false);
    EXPECT_TRUE(screenSaver.hears("++-1-2"));
    QDBusConnection::disconnectFromPeer("bus");
}
