#pragma once

#include "platform/UserDefaults.h"

#include <QSettings>

namespace tensio {

// Settings in an INI file. Errors in writing it are ignored.
class QtUserDefaults : public UserDefaults {
public:
    // The user's own file.
    QtUserDefaults();
    explicit QtUserDefaults(QString const& path);

    float floatForKey(std::string const& key) const override;
    void setFloat(std::string const& key, float value) override;
    void synchronize() override;

private:
    QSettings m_settings;
};

} // namespace tensio
