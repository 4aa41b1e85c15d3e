#include "demo/LatencyMeter.h"
#include "demo/Session.h"

#include <QTimer>

#include <cstdio>

namespace {

constexpr auto usage
    = "usage: tensio-demo FOLDER [HOURS]\n"
      "Plays unattended sessions and leaves their pictures and files in the folder. With HOURS, so "
      "much pressing is on the graph already.\n";

int play(tensio::LatencyMeter& meter, QStringList const& arguments)
{
    auto const& folder = arguments.at(1);
    try {
        tensio::Session(meter, folder, arguments.value(2).toInt()).play();
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
        qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" TENSIO_DEMO_SCREEN);
    tensio::LatencyMeter meter(argc, argv);
    if (argc != 2 && argc != 3) {
        std::fputs(usage, stderr);
        return 2;
    }
    QTimer::singleShot(
        0, &meter, [&] { QApplication::exit(play(meter, QApplication::arguments())); });
    return QApplication::exec();
}
