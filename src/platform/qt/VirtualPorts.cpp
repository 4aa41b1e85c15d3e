#include "platform/qt/VirtualPorts.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <chrono>
#include <stdexcept>

namespace tensio {

namespace {

QString lockOf(QString const& link)
{
    return link + QStringLiteral(".lock");
}

// QLockFile believes the process number in the file, which another process may have by now, until
// the file is this old. Then only the system's own lock counts, which ends with its process.
constexpr std::chrono::milliseconds trustedAge {1};

bool isPublished(QString const& link)
{
    QLockFile probe(lockOf(link));
    probe.setStaleLockTime(trustedAge);
    return !probe.tryLock() && probe.error() == QLockFile::LockFailedError;
}

} // namespace

QString virtualPortsFolder()
{
    auto const runtime = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    return runtime.isEmpty() ? QString() : runtime + QStringLiteral("/tensio/ports");
}

QStringList virtualPorts()
{
    QStringList paths;
    auto const folder = virtualPortsFolder();
    if (folder.isEmpty())
        return paths;
    // A link to a device counts as a system file, a dangling one as well.
    auto const entries = QDir(folder).entryInfoList(QDir::Files | QDir::System, QDir::Name);
    for (auto const& entry : entries) {
        if (entry.isSymLink() && entry.exists() && isPublished(entry.absoluteFilePath()))
            paths << entry.absoluteFilePath();
    }
    return paths;
}

VirtualPort::VirtualPort(QString const& name, QString const& terminal)
    : m_link(virtualPortsFolder() + u'/' + name)
    , m_lock(lockOf(m_link))
{
    constexpr int patience = 1000;
    if (virtualPortsFolder().isEmpty())
        throw std::runtime_error("the runtime folder of the session is missing or another user's");
    QDir().mkpath(virtualPortsFolder());
    m_lock.setStaleLockTime(trustedAge);
    if (!m_lock.tryLock(patience))
        throw std::runtime_error("cannot lock " + lockOf(m_link).toStdString());
    QFile::remove(m_link);
    if (!QFile::link(terminal, m_link))
        throw std::runtime_error("cannot make the link " + m_link.toStdString());
}

VirtualPort::~VirtualPort()
{
    QFile::remove(m_link);
}

} // namespace tensio
