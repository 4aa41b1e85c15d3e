#pragma once

#include "platform/PortInspector.h"

#include <QString>

namespace tensio {

// Describes the bridges in HTML; a connection uses the first one.
QString connectionReport(std::vector<InspectedPort> const& ports);

} // namespace tensio
