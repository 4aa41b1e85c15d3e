#pragma once

#include <QTemporaryDir>

namespace tensio {

// The user's runtime folder from now on, where terminals are published.
class RuntimeFolder : public QTemporaryDir {
public:
    RuntimeFolder() { qputenv("XDG_RUNTIME_DIR", path().toUtf8()); }
};

} // namespace tensio
