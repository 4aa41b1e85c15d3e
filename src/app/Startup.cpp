#include "app/Startup.h"

#include "toolkit/Look.h"

#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace tensio {

namespace {

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

} // namespace

std::unique_ptr<StartedProgram> startProgram(QApplication& application)
{
    identifyProgram(application);
    applyLook(application);
    auto program = std::make_unique<StartedProgram>();
    auto& window = program->application.window();
    program->services.setMainWindow(window);
    window.show();
    return program;
}

} // namespace tensio
