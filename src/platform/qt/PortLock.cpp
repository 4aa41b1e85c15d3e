#include "platform/qt/PortLock.h"

#include <QFile>
#include <QStringList>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <csignal>
#endif

namespace tensio {

namespace {

QString lockName(QString const& node)
{
    auto const devices = QStringLiteral("/dev/");
    auto name = node.startsWith(devices) ? node.sliced(devices.size()) : node;
    return QStringLiteral("LCK..") + name.replace(u'/', u'_');
}

bool namesNoLivingProcess(QString const& lock)
{
#ifdef Q_OS_UNIX
    QFile file(lock);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    auto const process = file.readLine(32).trimmed().toInt();
    return process > 0 && kill(process, 0) != 0 && errno == ESRCH;
#else
    Q_UNUSED(lock);
    return false;
#endif
}

} // namespace

QString abandonedLock(QString const& node)
{
    QStringList const folders {QStringLiteral("/var/lock/"), QStringLiteral("/etc/locks/"),
        QStringLiteral("/var/spool/locks/"), QStringLiteral("/var/spool/uucp/"),
        QStringLiteral("/tmp/"), QStringLiteral("/var/tmp/"), QStringLiteral("/var/lock/lockdev/"),
        QStringLiteral("/run/lock/")};
    for (auto const& folder : folders) {
        QString lock = folder + lockName(node);
        if (namesNoLivingProcess(lock))
            return lock;
    }
    return {};
}

} // namespace tensio
