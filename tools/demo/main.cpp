#include "LatencyMeter.h"
#include "Session.h"
#include "app/Application.h"

#include <QTimer>

#include <cstdio>

namespace {

int play(tensio::Application& application, tensio::LatencyMeter& meter, QString const& folder)
{
    try {
        tensio::Session(application, meter, folder).play();
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
    if (argc != 2) {
        std::fputs("usage: tensio-demo FOLDER\nPlays an unattended session and leaves its pictures "
                   "in the folder.\n",
            stderr);
        return 2;
    }
    tensio::prepareLook();
    tensio::Application application;
    application.window().show();
    QTimer::singleShot(
        0, &meter, [&] { meter.exit(play(application, meter, QString::fromLocal8Bit(argv[1]))); });
    return tensio::LatencyMeter::exec();
}
