#pragma once

class QDialog;
class QWidget;

namespace tensio {

// What the program is, its version, and the licences of what it is made of.
QDialog* makeAboutWindow(QWidget& parent);

} // namespace tensio
