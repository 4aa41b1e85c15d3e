#pragma once

namespace tensio {

// Gives the application the colours of the design in every role, so that no dark desktop palette
// shows through where the style sheet says nothing.
void setLightPalette();

} // namespace tensio
