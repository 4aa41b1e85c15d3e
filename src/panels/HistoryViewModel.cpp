#include "panels/HistoryViewModel.h"

#include "core/TensioManager.h"

namespace tensio {

HistoryViewModel::HistoryViewModel(TensioManager const& tensioManager)
    : cocoaActionIncSliceStartIndex(tensioManager.changeSliceStartingIndex, 1)
    , cocoaActionDecSliceStartIndex(tensioManager.changeSliceStartingIndex, -1)
{
    m_subscriptions += measurements.bindTo(tensioManager.sliceOfMeasurements);
    m_subscriptions += selectedAverage.bindTo(tensioManager.measurementList.selectedAverage);
}

} // namespace tensio
