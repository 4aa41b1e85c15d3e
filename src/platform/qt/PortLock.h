#pragma once

#include <QString>

namespace tensio {

// Serial programs lock a port with a file that holds their process ID. Returns the path of a lock
// file of the port at the node whose process no longer runs; empty if there is none. Elsewhere than
// on Unix always empty.
QString abandonedLock(QString const& node);

} // namespace tensio
