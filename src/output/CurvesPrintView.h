#pragma once

#include "core/Measurement.h"
#include "output/PagedView.h"

#include <string>

namespace tensio {

// The measurements as curves, pressure over time, one below the other. All curves of a page have
// the same scales. Measurements must be finished.
class CurvesPrintView : public PagedView {
public:
    // A selection is marked as such; it has at most three.
    CurvesPrintView(std::string name, Measurements measurements, bool isSelection);

    void draw(PrintCanvas& canvas) const override;

protected:
    int layOut(PrintCanvas const& canvas) override;

private:
    std::string m_name;
    Measurements m_measurements;
    bool m_isSelection;
    std::size_t m_curvesPerPage = 0;
};

} // namespace tensio
