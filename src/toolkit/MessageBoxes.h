#pragma once

class QObject;

namespace tensio {

// Gives every message box its margins, and room for the longest line of its text, which Qt would
// cut or break within words.
void layOutMessageBoxes(QObject& application);

} // namespace tensio
