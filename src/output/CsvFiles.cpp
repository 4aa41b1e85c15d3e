#include "output/CsvFiles.h"

#include "output/CsvBuilder.h"

namespace tensio {

namespace {

CsvBuilder begin(std::string const& name, std::string const& date)
{
    CsvBuilder builder("\r\n", "\t");
    builder.appendHeader(name, date);
    return builder;
}

} // namespace

std::string CsvFiles::all(
    std::string const& name, std::string const& date, Measurements const& measurements) const
{
    return begin(name, date).build(measurements);
}

std::string CsvFiles::selected(std::string const& name, std::string const& date,
    Measurements const& measurements, float average, float min, float max) const
{
    return begin(name, date).buildSelected(measurements, average, min, max);
}

} // namespace tensio
