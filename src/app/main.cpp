#include "app/Startup.h"

#include <QApplication>

int main(int argc, char** argv)
{
    QApplication qtApplication(argc, argv);
    auto const program = tensio::startProgram(qtApplication);
    return QApplication::exec();
}
