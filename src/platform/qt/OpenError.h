#pragma once

#include "platform/Error.h"

#include <QSerialPort>

namespace tensio {

// Why a port did not open, as a sentence that says what to do. Qt has one code for a port that is
// forbidden, in use or locked; the node and its lock files tell them apart.
ErrorRef openError(QSerialPort const& port, QString const& node);

} // namespace tensio
