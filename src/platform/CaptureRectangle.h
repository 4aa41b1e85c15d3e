#pragma once

#include "platform/Screen.h"

#include <string>

namespace tensio {

// "x,y,width,height", as the screenshot tool of macOS takes it: each number with at least one digit
// after the point and no more digits than reading it back exactly takes.
std::string captureRectangle(ScreenRect const& rect);

} // namespace tensio
