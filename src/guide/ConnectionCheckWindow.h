#pragma once

class QDialog;
class QWidget;

namespace tensio {

class PortInspector;

// Whether the device is found and can be read, for the user and for support by telephone.
QDialog* makeConnectionCheckWindow(PortInspector& ports, QWidget& parent);

} // namespace tensio
