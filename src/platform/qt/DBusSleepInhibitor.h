#pragma once

#include "platform/SleepInhibitor.h"

#include <QDBusConnection>
#include <QDBusUnixFileDescriptor>
#include <QObject>

#include <functional>
#include <optional>

namespace tensio {

// Asks the desktop's screen saver, or the login manager where there is none. No call waits for an
// answer. The system ends the inhibition when the program dies.
class DBusSleepInhibitor
    : public QObject
    , public SleepInhibitor {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(DBusSleepInhibitor)

public:
    using Bus = std::function<QDBusConnection()>;

    // A bus is opened when it is first needed.
    explicit DBusSleepInhibitor(
        Bus session = &QDBusConnection::sessionBus, Bus system = &QDBusConnection::systemBus);
    ~DBusSleepInhibitor() override;

    void setInhibited(bool isInhibited) override;

private:
    void inhibitScreenSaver();
    void inhibitLoginManager();
    void release(quint32 cookie);
    bool isCurrent(int request) const { return m_isInhibited && request == m_request; }

    Bus m_session;
    Bus m_system;
    bool m_isInhibited = false;
    // Distinguishes the answer to the latest request from a late one.
    int m_request = 0;
    // By which the screen saver identifies the inhibition.
    std::optional<quint32> m_cookie;
    // The login manager inhibits while this is open.
    QDBusUnixFileDescriptor m_lock;
};

} // namespace tensio
