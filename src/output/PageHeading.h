#pragma once

#include "platform/PrintCanvas.h"

namespace tensio {

constexpr double headingHeight = 38.0;

// The first line of a page: the kind of report and whose it is, and a remark on the right.
void drawHeading(PrintCanvas& canvas, PrintRect const& page, std::string const& title,
    std::string const& name, std::string const& remark);

} // namespace tensio
