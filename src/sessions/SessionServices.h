#pragma once

#include <functional>

class QWidget;

namespace tensio {

class Clock;
class FileWriter;
class SavePanel;
struct Course;

// What the commands of stored sessions use of the program.
struct SessionServices {
    SavePanel& savePanel;
    FileWriter& fileWriter;
    Clock const& clock;
    // Shows its pages above that window.
    std::function<void(Course const&, QWidget&)> showCourse;
};

} // namespace tensio
