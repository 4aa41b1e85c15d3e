#include "panels/HeaderViewModel.h"

#include "core/TensioManager.h"

namespace tensio {

HeaderViewModel::HeaderViewModel(TensioManager& tensioManager)
    : cocoaActionSaveCsv(tensioManager.saveCsvAction, Nothing {})
    , cocoaActionSaveScreenshot(tensioManager.saveScreenshotAction, Nothing {})
{
    m_subscriptions.push_back(username.bindTo(tensioManager.username));
    m_subscriptions.push_back(dateTime.bindTo(tensioManager.currentTime));
    m_subscriptions.push_back(
        tensioManager.isMeasuring.observeChanges([this, &tensioManager](bool isMeasuring) {
            canSaveStuff.setValue(
                !isMeasuring && !tensioManager.measurementList.measurements().empty());
        }));
}

} // namespace tensio
