#pragma once

namespace tensio {

class TensioManager;

// What the application does at the ends of its life.
class AppDelegate {
public:
    explicit AppDelegate(TensioManager& tensioManager)
        : m_tensioManager(tensioManager)
    {
    }

    void applicationWillTerminate();

private:
    TensioManager& m_tensioManager;
};

} // namespace tensio
