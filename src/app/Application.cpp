#include "app/Application.h"

#include "toolkit/Resources.h"
#include "toolkit/StyleSheet.h"

#include <QApplication>
#include <QFont>
#include <QLibraryInfo>
#include <QLocale>
#include <QStyleFactory>
#include <QTranslator>

namespace tensio {

Application::Application()
{
    m_screen.setMainWindow(window());
    m_subscriptions.push_back(m_ports.isVirtualPortOpen.observe(
        [this](bool isVirtual) { m_windowController.showSimulationInTitle(isVirtual); }));
    connect(qApp, &QCoreApplication::aboutToQuit, this,
        [this] { m_delegate.applicationWillTerminate(); });
}

void prepareLook()
{
    loadResources();
    QApplication::setApplicationName(QStringLiteral("tensio"));
    QApplication::setOrganizationName(QStringLiteral("tensio"));
    QLocale::setDefault(QLocale(QLocale::Japanese, QLocale::Japan));
    auto* translator = new QTranslator(qApp);
    if (translator->load(
            QStringLiteral("qtbase_ja"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(translator);

    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QFont font(QStringLiteral("Noto Sans CJK JP"));
    font.setPixelSize(14);
    QApplication::setFont(font);
    // Alerts and system panels; the windows of the design carry their own, scaled.
    qApp->setStyleSheet(styleSheet(1.0));
}

} // namespace tensio
