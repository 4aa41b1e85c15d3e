#pragma once

#include "app/Application.h"
#include "app/QtServices.h"
#include "platform/Clock.h"
#include "platform/qt/ProcessEnd.h"

#include <QApplication>

#include <memory>

namespace tensio {

// The program on the services of the system. When the process is asked to end, it quits as if its
// window were closed.
struct StartedProgram {
    Clock const& clock;
    QtServices services {};
    Application application {services.services(clock)};
    ProcessEnd processEnd {[] { QApplication::quit(); }, [this] { application.finish(); }};
};

// Gives the program its name, language and look, which Qt's own panels and the paths of its files
// follow, and shows its window. The clock must outlive it.
std::unique_ptr<StartedProgram> startProgram(QApplication& application, Clock const& clock);

} // namespace tensio
