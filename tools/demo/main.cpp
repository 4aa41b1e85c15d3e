#include "app/Startup.h"
#include "demo/LatencyMeter.h"
#include "demo/Session.h"

#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>

namespace {

constexpr auto usage
    = "usage: tensio-demo FOLDER [HOURS]\n"
      "Plays an unattended session and leaves its pictures and files in the folder. With HOURS, so "
      "much pressing is on the graph already.\n";

int play(
    tensio::Application& application, tensio::LatencyMeter& meter, QStringList const& arguments)
{
    auto const& folder = arguments.at(1);
    try {
        tensio::Session(application, meter, folder, arguments.value(2).toInt()).play();
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
        std::fputs(usage, stderr);
        return 2;
    }
    // The sessions of the person at the machine stay out of it.
    QTemporaryDir const data;
    qputenv("XDG_DATA_HOME", data.path().toLocal8Bit());
    auto const program = tensio::startProgram(meter);
    QTimer::singleShot(0, &meter,
        [&] { meter.exit(play(program->application, meter, QApplication::arguments())); });
    return tensio::LatencyMeter::exec();
}
