#pragma once

#include "platform/Screen.h"

#include <string>

namespace tensio {

// "x,y,width,height", as the screenshot tool of macOS expects it. Each number has at least one
// digit after the point, and the fewest digits that read back as the same number.
std::string captureRectangle(ScreenRect const& rect);

} // namespace tensio
