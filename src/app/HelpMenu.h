#pragma once

class QMainWindow;

namespace tensio {

class PortInspector;

// The menu with the guide, the check of the connection and what the program says of itself.
void addHelpMenu(QMainWindow& window, PortInspector& ports);

} // namespace tensio
