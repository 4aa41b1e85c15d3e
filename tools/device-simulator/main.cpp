#include "device-simulator/RecordedStream.h"
#include "device-simulator/Simulator.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <csignal>
#include <cstdio>
#include <fstream>
#include <stdexcept>

namespace {

volatile std::sig_atomic_t mustStop = 0;

void describeOptions(QCommandLineParser& parser)
{
    parser.setApplicationDescription(
        QStringLiteral("Plays a tongue-pressure device on a pseudo-terminal and publishes it as a "
                       "virtual port.\n\n"
                       "A recorded stream has a line a write: \"MILLISECONDS BYTES\", the pause "
                       "since the write before and what was\n"
                       "written, with \\n \\r \\t \\0 \\\\ \\xHH for what does not print. Lines "
                       "that begin with # do not count."));
    parser.addHelpOption();
    parser.addOptions({
        {QStringLiteral("name"), QStringLiteral("Name of the port."), QStringLiteral("NAME"),
            QStringLiteral("SLAB_USBtoUART-simulator")},
        {QStringLiteral("play"), QStringLiteral("Play a recorded stream."), QStringLiteral("FILE")},
        {QStringLiteral("once"),
            QStringLiteral("Play the recorded stream once, then end after 3 s of silence.")},
        {QStringLiteral("split"), QStringLiteral("Split the writes at random.")},
        {QStringLiteral("noise"),
            QStringLiteral("Put noise before a record with this probability, 0 to 1."),
            QStringLiteral("PROBABILITY"), QStringLiteral("0")},
        {QStringLiteral("pull"),
            QStringLiteral("Pull the cable that long after a reader has come."),
            QStringLiteral("SECONDS")},
        {QStringLiteral("stamps"),
            QStringLiteral("Write the time of each record, nanoseconds of the monotonic clock."),
            QStringLiteral("FILE")},
        {QStringLiteral("seed"), QStringLiteral("Another seed, other tremor, splits and noise."),
            QStringLiteral("NUMBER"), QStringLiteral("1")},
    });
}

double readNumber(QCommandLineParser const& parser, QString const& option, double low, double high)
{
    bool isNumber = false;
    auto const value = parser.value(option).toDouble(&isNumber);
    if (!isNumber || !(value >= low && value <= high))
        throw std::invalid_argument("--" + option.toStdString() + " takes a number from "
            + std::to_string(low) + " to " + std::to_string(high));
    return value;
}

tensio::SimulatorOptions readOptions(QCommandLineParser const& parser)
{
    tensio::SimulatorOptions options;
    options.portName = parser.value(QStringLiteral("name"));
    if (parser.isSet(QStringLiteral("play"))) {
        std::ifstream file(parser.value(QStringLiteral("play")).toStdString());
        if (!file)
            throw std::invalid_argument(
                "cannot read " + parser.value(QStringLiteral("play")).toStdString());
        options.recordedStream = tensio::readRecordedStream(file);
        if (options.recordedStream.empty())
            throw std::invalid_argument(
                "nothing to play in " + parser.value(QStringLiteral("play")).toStdString());
    }
    options.playsOnce = parser.isSet(QStringLiteral("once"));
    options.splitsWrites = parser.isSet(QStringLiteral("split"));
    options.noiseProbability = readNumber(parser, QStringLiteral("noise"), 0.0, 1.0);
    if (parser.isSet(QStringLiteral("pull")))
        options.pullAfterSeconds = readNumber(parser, QStringLiteral("pull"), 0.0, 86400.0);
    options.stampsFile = parser.value(QStringLiteral("stamps"));
    options.seed
        = static_cast<unsigned>(readNumber(parser, QStringLiteral("seed"), 0.0, 4294967295.0));
    return options;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    describeOptions(parser);
    parser.process(application);
    try {
        tensio::Simulator simulator(readOptions(parser));
        simulator.onFinished = &QCoreApplication::quit;

        // The published link must be removed also when a signal stops the program.
        std::signal(SIGINT, [](int) { mustStop = 1; });
        std::signal(SIGTERM, [](int) { mustStop = 1; });
        QTimer stopWatch;
        QObject::connect(&stopWatch, &QTimer::timeout, &stopWatch, [] {
            if (mustStop != 0)
                QCoreApplication::quit();
        });
        stopWatch.start(100);
        return QCoreApplication::exec();
    } catch (std::exception const& failure) {
        std::fprintf(stderr, "tensio-device-simulator: %s\n", failure.what());
        return 1;
    }
}
