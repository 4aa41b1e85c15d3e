#pragma once

#include "platform/qt/VirtualPorts.h"

#include <QFile>
#include <QTemporaryDir>

#include <map>
#include <string>

namespace tensio {

// For its lifetime the user's runtime folder is one of its own, where terminals can be published.
class RuntimeFolder {
public:
    RuntimeFolder() { qputenv("XDG_RUNTIME_DIR", QFile::encodeName(m_folder.path())); }
    RuntimeFolder(RuntimeFolder const&) = delete;
    RuntimeFolder& operator=(RuntimeFolder const&) = delete;
    ~RuntimeFolder()
    {
        if (m_before.isNull())
            qunsetenv("XDG_RUNTIME_DIR");
        else
            qputenv("XDG_RUNTIME_DIR", m_before);
    }

    QString path() const { return m_folder.path(); }
    // As a port whose name is the device's, a dash and this; replaces one of the same name.
    void publish(std::string const& node, QString const& name)
    {
        m_ports.erase(name);
        m_ports.try_emplace(
            name, QStringLiteral("SLAB_USBtoUART-") + name, QString::fromStdString(node));
    }

private:
    QByteArray m_before {qgetenv("XDG_RUNTIME_DIR")};
    QTemporaryDir m_folder;
    std::map<QString, VirtualPort> m_ports;
};

} // namespace tensio
