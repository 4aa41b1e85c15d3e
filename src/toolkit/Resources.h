#pragma once

namespace tensio {

// Makes pictures and style sheet known; a static library's resources are not found otherwise.
// Before the first window.
void loadResources();

} // namespace tensio
