#include "toolkit/Resources.h"

#include <QtGlobal>
#include <qresource.h>

// The macro declares a function of the global namespace.
static void initialize()
{
    Q_INIT_RESOURCE(resources);
}

namespace tensio {

void loadResources()
{
    initialize();
}

} // namespace tensio
