#pragma once

namespace tensio {

// Has the system write its buffers of an open file to the disk. False if it could not.
bool syncFile(int descriptor);

} // namespace tensio
