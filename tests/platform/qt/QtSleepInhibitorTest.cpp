#include "platform/qt/QtSleepInhibitor.h"

#include <QDBusMessage>
#include <QDBusServer>
#include <QDBusVirtualObject>
#include <QTest>

#include <gtest/gtest.h>

using namespace tensio;

namespace {

class ScreenSaver : public QDBusVirtualObject {
public:
    QStringList log;

    QString introspect(QString const& /*path*/) const override { return {}; }
    bool handleMessage(QDBusMessage const& call, QDBusConnection const& client) override
    {
        bool const isRequest = call.member() == QStringLiteral("Inhibit");
        log << (isRequest ? call.member() : u"UnInhibit %1"_qs.arg(call.arguments()[0].toUInt()));
        return client.send(
            isRequest ? call.createReply(static_cast<uint>(log.size())) : call.createReply());
    }
};

} // namespace

TEST(QtSleepInhibitor, ReleasesWhatItWasGrantedEvenWhenTheAnswerComesLate)
{
    ScreenSaver screenSaver;
    QDBusServer server(QStringLiteral("unix:tmpdir=/tmp"));
    QObject::connect(
        &server, &QDBusServer::newConnection, &screenSaver, [&](QDBusConnection client) {
            client.registerVirtualObject(
                QStringLiteral("/org/freedesktop/ScreenSaver"), &screenSaver);
        });
    auto const bus = [&] { return QDBusConnection::connectToPeer(server.address(), u"bus"_qs); };
    QtSleepInhibitor inhibitor(bus, bus);
    QStringList expected {u"Inhibit"_qs, u"Inhibit"_qs, u"UnInhibit 1"_qs};
    for (bool const isInhibited : {true, true, false, true})
        inhibitor.setInhibited(isInhibited);
    ASSERT_TRUE(QTest::qWaitFor([&] { return screenSaver.log == expected; }));
    inhibitor.setInhibited(false);
    expected << u"UnInhibit 2"_qs;
    EXPECT_TRUE(QTest::qWaitFor([&] { return screenSaver.log == expected; }));
    QDBusConnection::disconnectFromPeer(u"bus"_qs);
}
