#include "app/Startup.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace tensio {

void identifyProgram(QApplication& application)
{
    QApplication::setApplicationName(QStringLiteral("tensio"));
    QApplication::setApplicationVersion(QStringLiteral(TENSIO_VERSION));
    QApplication::setOrganizationName(QStringLiteral("tensio"));
    QLocale::setDefault(QLocale(QLocale::Japanese, QLocale::Japan));
    auto* translator = new QTranslator(&application);
    if (translator->load(
            QStringLiteral("qtbase_ja"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(translator);
}

} // namespace tensio
