#pragma once

#include <QLockFile>
#include <QString>
#include <QStringList>

namespace tensio {

// A link to a terminal in this folder is a port of the link's name, as long as a process holds the
// lock beside it. A link that a killed process left behind does not count: the system may have
// given the terminal to another program. Empty when the user has no runtime folder.
QString virtualPortsFolder();

// The paths of the links that count, by name.
QStringList virtualPorts();

// Publishes a terminal as a virtual port for its lifetime. Replaces a link that was left behind;
// throws std::runtime_error when another process publishes a port of this name, or there is no
// folder.
class VirtualPort {
public:
    VirtualPort(QString const& name, QString const& terminal);
    VirtualPort(VirtualPort const&) = delete;
    VirtualPort& operator=(VirtualPort const&) = delete;
    ~VirtualPort();

private:
    QString m_link;
    QLockFile m_lock;
};

} // namespace tensio
