#pragma once

#include "core/CsvFormat.h"

namespace tensio {

// The CSV files that the program saves: cells separated by TAB, lines ended by CR LF.
class CsvFiles : public CsvFormat {
public:
    std::string all(std::string const& name, std::string const& date,
        Measurements const& measurements) const override;
    std::string selected(std::string const& name, std::string const& date,
        Measurements const& measurements, float average, float min, float max) const override;
};

} // namespace tensio
