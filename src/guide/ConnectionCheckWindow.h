#pragma once

#include <QDialog>

class QTextBrowser;

namespace tensio {

class PortInspector;

// Whether the device is found and can be read, for the user and for support by telephone.
class ConnectionCheckWindow : public QDialog {
    Q_OBJECT

public:
    // The inspector must outlive the window.
    ConnectionCheckWindow(PortInspector& ports, QWidget& parent);

private:
    void reload();
    void copy();

    PortInspector& m_ports;
    QTextBrowser* m_report;
};

} // namespace tensio
