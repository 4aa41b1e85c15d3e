#pragma once

#include "core/Course.h"
#include "core/Measurement.h"

#include <string>

namespace tensio {

// Builds the text of a CSV file (UTF-8): each call appends, and build() or buildSelected() returns
// the whole text. Measurements must be finished.
class CsvBuilder {
public:
    CsvBuilder(std::string newline, std::string col);

    // Characters of the name that would break the table become blanks.
    CsvBuilder& appendHeader(std::string const& name, std::string const& date);
    // Every measurement a block of three columns, side by side, with all its points.
    std::string const& build(Measurements const& measurements);
    // Best pressures of at most three measurements, marked by position, with their average; kPa.
    std::string const& buildSelected(
        Measurements const& measurements, float average, float min, float max);

    // A line for each session.
    std::string const& buildCourse(Course const& course);

private:
    void appendLine(std::vector<std::string> const& cells);
    // Of each measurement the two cells that the function gives, and an empty one.
    void appendBlocks(Measurements const& measurements, auto const& cellsOf);

    std::string m_newline;
    std::string m_col;
    std::string m_csv;
};

// Begins a file as the program saves it (UTF-8): cells separated by TAB, lines ended by CR LF. The
// date is text, written as it is.
CsvBuilder csvFile(std::string const& name, std::string const& date);
std::string csvOfCourse(Course const& course);

} // namespace tensio
