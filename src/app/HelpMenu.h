#pragma once

#include <QObject>

#include <memory>

class QMainWindow;

namespace tensio {

class HelpWindow;
class PortInspector;

// The menu with the guide, the check of the connection and what the program says of itself.
class HelpMenu : public QObject {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HelpMenu)

public:
    // Nothing is owned; both must outlive the menu's use.
    HelpMenu(QMainWindow& window, PortInspector& ports);
    ~HelpMenu() override;

private:
    void showHelp();
    void checkConnection();
    void showAbout();

    QMainWindow& m_window;
    PortInspector& m_ports;
    std::unique_ptr<HelpWindow> m_help;
};

} // namespace tensio
