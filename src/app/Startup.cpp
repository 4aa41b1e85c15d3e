#include "app/Startup.h"

#include "toolkit/Look.h"

#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

using namespace Qt::StringLiterals;

namespace tensio {

namespace {

void identifyProgram(QApplication& application)
{
    QApplication::setApplicationName(u"tensio"_s);
    QApplication::setApplicationVersion(QStringLiteral(TENSIO_VERSION));
    QApplication::setOrganizationName(u"tensio"_s);
    QLocale::setDefault(QLocale(QLocale::Japanese, QLocale::Japan));
    auto* translator = new QTranslator(&application);
    if (translator->load(u"qtbase_ja"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(translator);
}

// Qt's page set-up warns of what it copes with: a printer that is a file, a font with its size in
// pixels.
void leaveOutWarningsOfPageSetup()
{
    static QtMessageHandler const handler = qInstallMessageHandler(
        [](QtMsgType type, QMessageLogContext const& context, QString const& message) {
            bool const isOfPageSetup = message.startsWith(u"QPageSetupDialog: Cannot be used"_s)
                || message.startsWith(u"QFont::setPointSizeF: Point size <= 0 (-0.25"_s);
            if (!isOfPageSetup)
                handler(type, context, message);
        });
}

} // namespace

std::unique_ptr<StartedProgram> startProgram(QApplication& application, Clock const& clock)
{
    leaveOutWarningsOfPageSetup();
    identifyProgram(application);
    applyLook(application);
    std::unique_ptr<StartedProgram> program(new StartedProgram {clock});
    auto& window = program->application.window();
    program->services.setMainWindow(window);
    window.show();
    return program;
}

} // namespace tensio
