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
        u"Plays a tongue-pressure device on a pseudo-terminal and publishes it as a virtual "
        "port.\n\nA recorded stream has a line a write: \"MILLISECONDS BYTES\", the pause since "
        "the write before and what was\nwritten, with \\n \\r \\t \\0 \\\\ \\xHH for what does not "
        "print. Lines that begin with # do not count."_s);
    parser.addHelpOption();
    parser.addOptions({
        {u"play"_s, u"Play a recorded stream."_s, u"FILE"_s},
        {u"once"_s, u"Play the recorded stream once, then end after 3 s of silence."_s},
        {u"split"_s, u"Split the writes at random."_s},
        {u"noise"_s, u"Put noise before a record with this probability, 0 to 1."_s,
            u"PROBABILITY"_s, u"0"_s},
        {u"pull"_s, u"Pull the cable that long after a reader has come."_s, u"SECONDS"_s},
        {u"stamps"_s, u"Write the time of each record, nanoseconds of the monotonic clock."_s,
            u"FILE"_s},
    });
}

double readNumber(QCommandLineParser const& parser, QString const& option, double high)
{
    bool isNumber = false;
    auto const value = parser.value(option).toDouble(&isNumber);
    if (!isNumber || !(value >= 0.0 && value <= high))
        throw std::invalid_argument(
            "--" + option.toStdString() + " takes a number from 0 to " + std::to_string(high));
    return value;
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
    options.splitsWrites = parser.isSet(u"split"_s);
    options.noiseProbability = readNumber(parser, u"noise"_s, 1.0);
    if (parser.isSet(u"pull"_s))
        options.pullAfterSeconds = readNumber(parser, u"pull"_s, 86400.0);
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
