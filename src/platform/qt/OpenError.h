#pragma once

#include "platform/Error.h"

#include <QSerialPort>

namespace tensio {

// Why a port did not open, with a message that says what to do. Qt has one code for a port that is
// forbidden, in use or locked; the device file and its lock files distinguish them.
ErrorRef openError(QSerialPort const& port, QString const& node);

} // namespace tensio
