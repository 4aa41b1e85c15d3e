#pragma once

#include "core/Measurement.h"
#include "reactive/Interface.h"

#include <string>

namespace tensio {

// Makes the text of a CSV file (UTF-8) from finished measurements. An interface because `output`,
// which writes it, builds on this library.
class CsvFormat : public Interface {
public:
    // The date is text, written as it is.
    virtual std::string all(std::string const& name, std::string const& date,
        Measurements const& measurements) const = 0;
    // At most three measurements; average, smallest and largest best pressure in kPa.
    virtual std::string selected(std::string const& name, std::string const& date,
        Measurements const& measurements, float average, float min, float max) const = 0;
};

} // namespace tensio
