#include "output/Reports.h"

#include "core/TensioManager.h"
#include "output/GridPrintView.h"
#include "output/ListPrintView.h"

namespace tensio {

namespace {

Measurements const& measurementsOf(TensioManager const& tensioManager)
{
    return tensioManager.measurementList.measurements();
}

} // namespace

bool hasReport(ReportKind kind, TensioManager const& tensioManager)
{
    return kind == ReportKind::Selected ? !tensioManager.measurementList.counted().empty()
                                        : !measurementsOf(tensioManager).empty();
}

std::unique_ptr<PrintView> makeReport(ReportKind kind, TensioManager const& tensioManager)
{
    auto const& name = tensioManager.username.value();
    auto const& list = tensioManager.measurementList;
    switch (kind) {
    case ReportKind::List:
        return std::make_unique<ListPrintView>(name, measurementsOf(tensioManager));
    case ReportKind::Grid:
        return std::make_unique<GridPrintView>(name, measurementsOf(tensioManager));
    case ReportKind::Selected:
        break;
    }
    return std::make_unique<GridPrintView>(name, list.counted(),
        SelectionSummary {
            list.selectedAverage.value(), list.minSelectedPressure(), list.maxSelectedPressure()});
}

} // namespace tensio
