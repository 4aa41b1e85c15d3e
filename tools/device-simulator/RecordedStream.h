#pragma once

#include "device-simulator/PressingStory.h"

#include <istream>
#include <vector>

namespace tensio {

// A recorded stream: a line a write, "MILLISECONDS BYTES", the pause since the write before and
// what was written, with \n, \r, \t, \0, \\, \xHH for what does not print. Empty lines and lines
// that begin with # do not count. Throws std::invalid_argument with the line's number when one does
// not read.
std::vector<TimedBytes> readRecordedStream(std::istream& input);

} // namespace tensio
