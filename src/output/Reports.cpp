#include "output/Reports.h"

#include "core/TensioManager.h"
#include "output/CurvesPrintView.h"
#include "output/GridPrintView.h"
#include "output/ListPrintView.h"

namespace tensio {

namespace {

std::unique_ptr<PagedView> unmarkedReport(ReportKind kind, TensioManager const& tensioManager)
{
    auto const& name = tensioManager.username.value();
    auto const& list = tensioManager.measurementList;
    auto const selection = list.counted();
    switch (kind) {
    case ReportKind::List:
        return std::make_unique<ListPrintView>(name, list.measurements());
    case ReportKind::Grid:
        return std::make_unique<GridPrintView>(name, list.measurements());
    case ReportKind::Curves:
        return std::make_unique<CurvesPrintView>(
            name, selection.empty() ? list.measurements() : selection, !selection.empty());
    case ReportKind::Selected:
        break;
    }
    return std::make_unique<GridPrintView>(name, selection,
        SelectionSummary {
            list.selectedAverage.value(), list.minSelectedPressure(), list.maxSelectedPressure()});
}

} // namespace

bool hasReport(ReportKind kind, TensioManager const& tensioManager)
{
    auto const& list = tensioManager.measurementList;
    bool const isEmpty
        = kind == ReportKind::Selected ? list.counted().empty() : list.measurements().empty();
    return !isEmpty && !tensioManager.isMeasuring.value();
}

std::unique_ptr<PrintView> makeReport(ReportKind kind, TensioManager const& tensioManager)
{
    auto report = unmarkedReport(kind, tensioManager);
    report->setSimulated(tensioManager.serialPortManager.isSimulated.value());
    return report;
}

std::unique_ptr<PrintView> makeCurve(
    std::shared_ptr<Measurement> const& measurement, TensioManager const& tensioManager)
{
    auto report = std::make_unique<CurvesPrintView>(
        tensioManager.username.value(), Measurements {measurement}, false);
    report->setSimulated(tensioManager.serialPortManager.isSimulated.value());
    return report;
}

} // namespace tensio
