#include "app/Application.h"
#include "app/QtServices.h"
#include "app/Startup.h"
#include "toolkit/Look.h"

#include <QApplication>

int main(int argc, char** argv)
{
    QApplication qtApplication(argc, argv);
    tensio::identifyProgram(qtApplication);
    tensio::applyLook(qtApplication);
    tensio::QtServices services;
    tensio::Application application(services.services());
    services.setMainWindow(application.window());
    application.window().show();
    return QApplication::exec();
}
