#include "app/Startup.h"

#include <QApplication>

int main(int argc, char** argv)
{
    QApplication qtApplication(argc, argv);
    tensio::SystemClock const clock;
    auto const program = tensio::startProgram(qtApplication, clock);
    return QApplication::exec();
}
