#pragma once

#include "platform/PrintView.h"

#include <memory>

namespace tensio {

class TensioManager;

enum class ReportKind { List, Grid, Selected };

// True if there are measurements to report.
bool hasReport(ReportKind kind, TensioManager const& tensioManager);

// A report of the current measurements. Requires hasReport().
std::unique_ptr<PrintView> makeReport(ReportKind kind, TensioManager const& tensioManager);

} // namespace tensio
