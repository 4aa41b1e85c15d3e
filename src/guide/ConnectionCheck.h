#pragma once

#include "platform/PortInspector.h"

#include <QString>

namespace tensio {

// Describes the ports in HTML, as inspect() gives them; a connection uses the first bridge.
QString connectionReport(std::vector<InspectedPort> const& ports);

} // namespace tensio
