#pragma once

#include "platform/SleepInhibitor.h"

#include <memory>

namespace tensio {

// That of this system; each system has a file of its own.
std::unique_ptr<SleepInhibitor> makeSleepInhibitor();

} // namespace tensio
