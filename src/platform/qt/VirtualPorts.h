#pragma once

#include <QString>
#include <QStringList>

namespace tensio {

// A link to a terminal in this folder is a port of the link's name. The simulated device publishes
// itself here.
QString virtualPortsFolder();

// The paths of the links whose terminal exists, by name.
QStringList virtualPorts();

} // namespace tensio
