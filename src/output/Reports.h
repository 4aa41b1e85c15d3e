#pragma once

#include "platform/PrintView.h"

#include <memory>

namespace tensio {

class TensioManager;
struct Measurement;

enum class ReportKind { List, Grid, Selected, Curves };

// True if there are measurements to report and none is going on.
bool hasReport(ReportKind kind, TensioManager const& tensioManager);

// A report of the current measurements; the curves are those of the selected ones, or of all when
// none is selected. Requires hasReport().
std::unique_ptr<PrintView> makeReport(ReportKind kind, TensioManager const& tensioManager);
// The curve of one of the current measurements.
std::unique_ptr<PrintView> makeCurve(
    std::shared_ptr<Measurement> const& measurement, TensioManager const& tensioManager);

} // namespace tensio
