#pragma once

#include "platform/PortInspector.h"

#include <QString>

namespace tensio {

// What there is to know of the bridges, in HTML: the first is the one that a connection takes.
QString connectionReport(std::vector<InspectedPort> const& ports);

} // namespace tensio
