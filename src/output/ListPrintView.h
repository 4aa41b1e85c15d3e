#pragma once

#include "core/Measurement.h"
#include "output/PagedView.h"

#include <string>

namespace tensio {

// The measurements as a table, one a line, under one heading line. Measurements must be finished.
class ListPrintView : public PagedView {
public:
    ListPrintView(std::string name, Measurements measurements);

    void draw(PrintCanvas& canvas) const override;

protected:
    int layOut(PrintCanvas const& canvas) override;

private:
    std::string m_name;
    Measurements m_measurements;
    // The heading line of the first page counts.
    int m_linesPerPage = 0;
};

} // namespace tensio
