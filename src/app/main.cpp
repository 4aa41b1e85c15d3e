#include "app/Application.h"
#include "app/Startup.h"
#include "toolkit/Look.h"

#include <QApplication>

int main(int argc, char** argv)
{
    QApplication qtApplication(argc, argv);
    tensio::identifyProgram(qtApplication);
    tensio::applyLook(qtApplication);
    tensio::Application application;
    application.window().show();
    return QApplication::exec();
}
