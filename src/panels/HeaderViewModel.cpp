#include "panels/HeaderViewModel.h"

#include "core/TensioManager.h"

namespace tensio {

HeaderViewModel::HeaderViewModel(TensioManager& tensioManager)
{
    m_subscriptions.push_back(username.bindTo(tensioManager.username));
    m_subscriptions.push_back(dateTime.bindTo(tensioManager.currentTime));
}

} // namespace tensio
