#include "app/AppDelegate.h"

#include "core/TensioManager.h"

namespace tensio {

void AppDelegate::applicationWillTerminate()
{
    m_tensioManager.serialPortManager.disconnect();
}

} // namespace tensio
