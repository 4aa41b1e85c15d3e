#include "panels/HeaderViewModel.h"

#include "core/TensioManager.h"

namespace tensio {

HeaderViewModel::HeaderViewModel(TensioManager const& tensioManager)
    : cocoaActionSaveCsv(tensioManager.saveCsvAction, Nothing {})
    , cocoaActionSaveScreenshot(tensioManager.saveScreenshotAction, Nothing {})
{
    m_subscriptions += username.bindTo(tensioManager.username);
    m_subscriptions += dateTime.bindTo(tensioManager.currentTime);
    m_subscriptions
        += tensioManager.isMeasuring.observeChanges([this, &tensioManager](bool isMeasuring) {
               canSaveStuff.setValue(
                   !isMeasuring && !tensioManager.measurementList.measurements().empty());
           });
}

} // namespace tensio
