#pragma once

#include "core/Measurement.h"

namespace tensio {

struct StoredSession;

// The measurements of a stored session as they stood when it was finished, none selected.
Measurements measurementsOf(StoredSession const& session);

} // namespace tensio
