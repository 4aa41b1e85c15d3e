#include "platform/qt/QtUserDefaults.h"

#include <QLocale>

namespace tensio {

QtUserDefaults::QtUserDefaults()
    : m_settings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("tensio"),
        QStringLiteral("tensio"))
{
}

QtUserDefaults::QtUserDefaults(QString const& path)
    : m_settings(path, QSettings::IniFormat)
{
}

float QtUserDefaults::floatForKey(std::string const& key) const
{
    auto const text = m_settings.value(QString::fromStdString(key)).toString();
    bool isNumber = false;
    auto const value = QLocale::c().toFloat(text, &isNumber);
    return isNumber ? value : 0.0f;
}

void QtUserDefaults::setFloat(std::string const& key, float value)
{
    // As text, so that a person can read and correct the file.
    m_settings.setValue(QString::fromStdString(key),
        QLocale::c().toString(value, 'g', QLocale::FloatingPointShortest));
}

void QtUserDefaults::synchronize()
{
    m_settings.sync();
}

} // namespace tensio
