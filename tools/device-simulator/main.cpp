#include "device-simulator/RecordedStream.h"
#include "device-simulator/Simulator.h"
#include "platform/qt/ProcessEnd.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>
#include <fstream>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace {

void describeOptions(QCommandLineParser& parser)
{
    parser.setApplicationDescription(
        u"Plays a tongue-pressure device on a pseudo-terminal and publishes it as a virtual port."_s);
    parser.addHelpOption();
    parser.addOptions({
        {u"play"_s, u"Play a recorded stream, as the manual page describes it."_s, u"FILE"_s},
        {u"once"_s, u"Play the recorded stream once, then end after 3 s of silence."_s},
        {u"pull"_s, u"Pull the cable that long after a reader has come."_s, u"SECONDS"_s},
        {u"stamps"_s, u"Write the time of each record, nanoseconds of the monotonic clock."_s,
            u"FILE"_s},
    });
}

std::vector<tensio::TimedBytes> readStream(std::string const& path)
{
    std::ifstream file(path);
    auto stream = tensio::readRecordedStream(file);
    if (stream.empty())
        throw std::invalid_argument("nothing to play in " + path);
    return stream;
}

tensio::SimulatorOptions readOptions(QCommandLineParser const& parser)
{
    tensio::SimulatorOptions options;
    if (parser.isSet(u"play"_s))
        options.recordedStream = readStream(parser.value(u"play"_s).toStdString());
    options.playsOnce = parser.isSet(u"once"_s);
    if (parser.isSet(u"pull"_s)) {
        bool isNumber = false;
        options.pullAfterSeconds = parser.value(u"pull"_s).toUShort(&isNumber);
        if (!isNumber)
            throw std::invalid_argument("--pull takes whole seconds");
    }
    options.stampsFile = parser.value(u"stamps"_s);
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
        tensio::ProcessEnd const end([] { QCoreApplication::quit(); }, [] {});
        return QCoreApplication::exec();
    } catch (std::exception const& failure) {
        std::fprintf(stderr, "tensio-device-simulator: %s\n", failure.what());
        return 1;
    }
}
