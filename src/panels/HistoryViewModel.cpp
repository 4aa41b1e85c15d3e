#include "panels/HistoryViewModel.h"

#include "core/TensioManager.h"

namespace tensio {

HistoryViewModel::HistoryViewModel(TensioManager& tensioManager)
    : cocoaActionIncSliceStartIndex(tensioManager.changeSliceStartingIndex, 1)
    , cocoaActionDecSliceStartIndex(tensioManager.changeSliceStartingIndex, -1)
{
    m_subscriptions.push_back(measurements.bindTo(tensioManager.sliceOfMeasurements));
    m_subscriptions.push_back(
        selectedAverage.bindTo(tensioManager.measurementList.selectedAverage));
}

} // namespace tensio
