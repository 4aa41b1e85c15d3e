#include "platform/qt/VirtualPorts.h"

#include <QDir>
#include <QStandardPaths>

namespace tensio {

QString virtualPortsFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation)
        + QStringLiteral("/tensio/ports");
}

QStringList virtualPorts()
{
    QStringList paths;
    // A link to a device counts as a system file, a dangling one as well.
    auto const entries
        = QDir(virtualPortsFolder()).entryInfoList(QDir::Files | QDir::System, QDir::Name);
    for (auto const& entry : entries) {
        if (entry.isSymLink() && entry.exists())
            paths << entry.absoluteFilePath();
    }
    return paths;
}

} // namespace tensio
