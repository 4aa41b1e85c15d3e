#pragma once

#include "platform/qt/VirtualPorts.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <string>

namespace tensio {

// For its lifetime the user's runtime folder is one of its own, where terminals can be published.
class RuntimeFolder {
public:
    RuntimeFolder()
    {
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(m_folder.path()));
        QDir().mkpath(virtualPortsFolder());
    }
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
    // As a port whose name is the device's, a dash and this.
    void publish(std::string const& node, QString const& name) const
    {
        QFile::link(QString::fromStdString(node),
            virtualPortsFolder() + QStringLiteral("/SLAB_USBtoUART-") + name);
    }

private:
    QByteArray m_before {qgetenv("XDG_RUNTIME_DIR")};
    QTemporaryDir m_folder;
};

} // namespace tensio
