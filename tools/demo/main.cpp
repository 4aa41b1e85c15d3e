#include "Gallery.h"
#include "LatencyMeter.h"
#include "Session.h"
#include "app/Application.h"

#include <QTimer>

#include <cstdio>

namespace {

constexpr auto usage
    = "usage: tensio-demo FOLDER [HOURS]\n"
      "Plays an unattended session and leaves its pictures and files in the folder. With HOURS, so "
      "much pressing is on the graph already.\n"
      "usage: tensio-demo --gallery FOLDER\n"
      "Leaves pictures of other sizes, longest texts and all states of the controls in the "
      "folder.\n";

int play(
    tensio::Application& application, tensio::LatencyMeter& meter, QStringList const& arguments)
{
    bool const isGallery = arguments.at(1) == QStringLiteral("--gallery");
    auto const folder = isGallery ? arguments.value(2) : arguments.at(1);
    try {
        if (isGallery)
            tensio::Gallery(application, folder).show();
        else
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
    tensio::prepareLook();
    tensio::Application application;
    application.window().show();
    QTimer::singleShot(
        0, &meter, [&] { meter.exit(play(application, meter, QApplication::arguments())); });
    return tensio::LatencyMeter::exec();
}
