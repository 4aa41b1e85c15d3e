#include "LatencyMeter.h"
#include "Session.h"
#include "app/Application.h"

#include <QTimer>

#include <cstdio>

namespace {

int play(tensio::Application& application, tensio::LatencyMeter& meter, QString const& folder,
    int pastHours)
{
    try {
        tensio::Session(application, meter, folder, pastHours).play();
    } catch (tensio::DemoFailure const& failure) {
        std::fprintf(stderr, "The session failed: %s\n", failure.what());
        return 1;
    }
    std::printf("Done; the pictures are in %s.\n", qPrintable(folder));
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && qEnvironmentVariableIsEmpty("DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    tensio::LatencyMeter meter(argc, argv);
    if (argc != 2 && argc != 3) {
        std::fputs("usage: tensio-demo FOLDER [HOURS]\nPlays an unattended session and leaves its "
                   "pictures and files in the folder. With HOURS, so much pressing is on the graph "
                   "already.\n",
            stderr);
        return 2;
    }
    int const pastHours = argc == 3 ? QString::fromLocal8Bit(argv[2]).toInt() : 0;
    tensio::prepareLook();
    tensio::Application application;
    application.window().show();
    QTimer::singleShot(0, &meter,
        [&] { meter.exit(play(application, meter, QString::fromLocal8Bit(argv[1]), pastHours)); });
    return tensio::LatencyMeter::exec();
}
