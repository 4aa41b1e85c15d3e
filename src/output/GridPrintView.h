#pragma once

#include "core/Measurement.h"
#include "output/PagedView.h"

#include <string>

namespace tensio {

// The best pressures of a selection, kPa. An average of 0 stands for no selection.
struct SelectionSummary {
    float selectedAverage = 0.0f;
    float selectedMin = 0.0f;
    float selectedMax = 0.0f;
};

// The measurements as framed blocks in rows and columns, or one block that summarises a selection
// of one to three. Measurements must be finished.
class GridPrintView : public PagedView {
public:
    // The full grid.
    GridPrintView(std::string name, Measurements measurements);
    // The summary of a selection.
    GridPrintView(std::string name, Measurements measurements, SelectionSummary selection);

    void draw(PrintCanvas& canvas) const override;

protected:
    int layOut(PrintCanvas const& canvas) override;

private:
    int blocksPerPage() const { return m_blockRowsPerPage * m_blockColumnsPerPage; }
    void drawGrid(PrintCanvas& canvas) const;
    void drawMeasurement(
        PrintCanvas& canvas, PrintRect block, Measurement const& measurement) const;
    void drawSelection(PrintCanvas& canvas) const;
    PrintRect blockFrame(int row, int column) const;

    std::string m_name;
    Measurements m_measurements;
    SelectionSummary m_selection;
    double m_blockWidth = 140.0;
    double m_blockHeight = 175.0;
    int m_blockRowsPerPage = 0;
    int m_blockColumnsPerPage = 0;
};

} // namespace tensio
