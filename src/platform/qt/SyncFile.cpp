#include "platform/qt/SyncFile.h"

#include <QtGlobal>

#ifdef Q_OS_WIN
#include <io.h>
#else
#include <fcntl.h>
#include <unistd.h>
#endif

namespace tensio {

bool syncFile(int descriptor)
{
#if defined(Q_OS_WIN)
    return _commit(descriptor) == 0;
#elif defined(Q_OS_MACOS)
    // fsync leaves the data in the disk's own buffer; some file systems have nothing else.
    return fcntl(descriptor, F_FULLFSYNC) == 0 || fsync(descriptor) == 0;
#else
    return fsync(descriptor) == 0;
#endif
}

} // namespace tensio
