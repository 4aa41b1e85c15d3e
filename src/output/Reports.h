#pragma once

#include "platform/PrintView.h"

#include <memory>

namespace tensio {

class TensioManager;

enum class ReportKind { List, Grid, Selected };

// The report has something to show.
bool hasReport(ReportKind kind, TensioManager const& tensioManager);

// Of the measurements as they are now; only where hasReport.
std::unique_ptr<PrintView> makeReport(ReportKind kind, TensioManager const& tensioManager);

} // namespace tensio
