#pragma once

#include <QString>

namespace tensio {

// Serial programs keep each other away from a port by a file with their process number. This is the
// path of such a file, for the port at the node, whose process no longer runs; empty when there is
// none.
QString abandonedLock(QString const& node);

} // namespace tensio
