#pragma once

#include "panels/StatusViewModel.h"

class QLabel;
class QPushButton;

namespace tensio {

// The line of the history strip that says what to do next, or where the last save went; beneath it,
// which measurements are shown. It follows the status until the subscriptions end. The saved button
// stands where the hint does and opens the folder.
Subscriptions showStatusLine(
    StatusViewModel const& status, QLabel& hint, QLabel& count, QPushButton& saved);

} // namespace tensio
