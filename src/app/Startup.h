#pragma once

class QApplication;

namespace tensio {

// Name, version and language of the program, which Qt's own panels and the paths of its files
// follow. Called before anything else of the program is made.
void identifyProgram(QApplication& application);

} // namespace tensio
