#pragma once

namespace tensio {

class Alerts;
class Clock;
class FileWriter;
class PortInspector;
class PrintPanels;
class RunLoop;
class SavePanel;
class Screen;
class SerialPortList;
class SessionStore;
class SleepInhibitor;
class UserDefaults;

// What the program uses of its surroundings.
struct Services {
    SerialPortList& ports;
    PortInspector& portInspector;
    RunLoop& runLoop;
    Clock const& clock;
    UserDefaults& userDefaults;
    Alerts& alerts;
    SavePanel& savePanel;
    FileWriter& fileWriter;
    Screen& screen;
    PrintPanels& printPanels;
    SessionStore& sessionStore;
    SleepInhibitor& sleepInhibitor;
};

} // namespace tensio
