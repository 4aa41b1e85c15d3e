#include "platform/qt/DBusSleepInhibitor.h"

#include "platform/qt/MakeSleepInhibitor.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <utility>

namespace tensio {

namespace {

constexpr int timeout = 5000; // ms
QString const program = QStringLiteral("tensio");
QString const reason = QStringLiteral("舌圧の測定中");

QDBusMessage screenSaverCall(QString const& method)
{
    auto const name = QStringLiteral("org.freedesktop.ScreenSaver");
    return QDBusMessage::createMethodCall(
        name, QStringLiteral("/org/freedesktop/ScreenSaver"), name, method);
}

} // namespace

DBusSleepInhibitor::DBusSleepInhibitor(Bus session, Bus system)
    : m_session(std::move(session))
    , m_system(std::move(system))
{
}

DBusSleepInhibitor::~DBusSleepInhibitor()
{
    DBusSleepInhibitor::setInhibited(false);
}

void DBusSleepInhibitor::setInhibited(bool isInhibited)
{
    if (isInhibited == std::exchange(m_isInhibited, isInhibited))
        return;
    if (isInhibited) {
        ++m_request;
        inhibitScreenSaver();
        return;
    }
    m_lock = {};
    if (m_cookie)
        release(*std::exchange(m_cookie, std::nullopt));
}

void DBusSleepInhibitor::inhibitScreenSaver()
{
    auto const bus = m_session();
    // A call on a bus that is not there never finishes.
    if (!bus.isConnected()) {
        inhibitLoginManager();
        return;
    }
    auto call = screenSaverCall(QStringLiteral("Inhibit"));
    call << program << reason;
    auto* answer = new QDBusPendingCallWatcher(bus.asyncCall(call, timeout), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer, request = m_request] {
        answer->deleteLater();
        QDBusPendingReply<quint32> const cookie(*answer);
        if (cookie.isError() && isCurrent(request))
            inhibitLoginManager();
        else if (!cookie.isError() && isCurrent(request))
            m_cookie = cookie.value();
        else if (!cookie.isError())
            release(cookie.value());
    });
}

void DBusSleepInhibitor::inhibitLoginManager()
{
    auto const bus = m_system();
    if (!bus.isConnected())
        return;
    auto call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.login1"),
        QStringLiteral("/org/freedesktop/login1"), QStringLiteral("org.freedesktop.login1.Manager"),
        QStringLiteral("Inhibit"));
    call << QStringLiteral("sleep:idle") << program << reason << QStringLiteral("block");
    auto* answer = new QDBusPendingCallWatcher(bus.asyncCall(call, timeout), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer, request = m_request] {
        answer->deleteLater();
        // A lock that comes too late is released with its answer.
        QDBusPendingReply<QDBusUnixFileDescriptor> const lock(*answer);
        if (!lock.isError() && isCurrent(request))
            m_lock = lock.value();
    });
}

void DBusSleepInhibitor::release(quint32 cookie)
{
    auto call = screenSaverCall(QStringLiteral("UnInhibit"));
    call << cookie;
    m_session().asyncCall(call, timeout);
}

std::unique_ptr<SleepInhibitor> makeSleepInhibitor()
{
    return std::make_unique<DBusSleepInhibitor>();
}

} // namespace tensio
