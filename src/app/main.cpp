#include "app/Application.h"

#include <QApplication>

int main(int argc, char** argv)
{
    QApplication qtApplication(argc, argv);
    tensio::prepareLook();
    tensio::Application application;
    application.window().show();
    return QApplication::exec();
}
