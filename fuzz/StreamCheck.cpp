#include "StreamCheck.h"

#include "FuzzInput.h"
#include "NaiveReader.h"
#include "NaiveSession.h"
#include "core/DeviceRecord.h"
#include "platform/RecordGatherer.h"
#include "support/Session.h"

#include <cmath>
#include <sstream>

namespace tensio::fuzz {

namespace {

constexpr auto name = "氏\t名𠮷";
// The moment of the manual clock, in the time zone UTC.
std::u16string const head = u"氏名\t氏 名𠮷\r\n測定日時\t2024/03/05 14:07\r\n\r\n";

// The outcome of the real code.
struct Outcome {
    std::vector<Reading> published;
    std::vector<float> shown;
    std::vector<NaiveMeasurement> measurements;
    std::string csv;
    std::string selectedCsv;
    std::size_t timersLeft = 0;
};

std::vector<NaiveMeasurement> plain(Measurements const& list)
{
    std::vector<NaiveMeasurement> measurements;
    for (auto const& each : list)
        measurements.push_back({each->number, *each->bestPressure, *each->pressurePoints});
    return measurements;
}

void end(Session& session, RecordGatherer& gatherer, bool byPulling)
{
    if (byPulling) {
        gatherer.flush();
        session.port->playLoss();
    } else {
        gatherer.discard();
        session.manager.disconnectAction.apply(Nothing {});
    }
}

Outcome play(FuzzInput const& input)
{
    Session session;
    Outcome outcome;
    auto& manager = session.manager;
    auto const milliseconds
        = [&] { return static_cast<int>(std::lround(session.runLoop.now().count() * 1000.0)); };
    auto const publishing = manager.serialPortManager.pressure.observeChanges([&](float pressure) {
        outcome.published.push_back({milliseconds(), pressure});
    });
    auto const showing = manager.currentPressure.observeChanges(
        [&](float pressure) { outcome.shown.push_back(pressure); });
    session.connect(input.targetPressure);
    outcome.shown.clear();
    manager.username.setValue(name);
    manager.changeTargetPressurePercentAction.apply(input.targetPressurePercent);

    RecordGatherer gatherer(session.runLoop, deviceRecordShape,
        [&](std::string_view chunk) { session.port->delegate->serialPortDidReceiveData(chunk); });
    for (auto const& [pause, bytes] : input.writes) {
        session.runLoop.advance(Seconds(pause / 1000.0));
        gatherer.receive(bytes);
    }
    session.runLoop.advance(Seconds(input.restMilliseconds / 1000.0));
    end(session, gatherer, input.endsByPulling);

    outcome.measurements = plain(manager.measurementList.measurements());
    session.saving.answer = "file.csv";
    manager.saveCsv();
    outcome.csv = std::exchange(session.saving.written, {});
    for (auto const& measurement : manager.measurementList.measurements())
        measurement->isCounted.setValue(measurement->isEnabled.value());
    manager.saveSelectedCsv();
    outcome.selectedCsv = session.saving.written;
    outcome.timersLeft = session.runLoop.liveTimers();
    return outcome;
}

bool isSame(float left, float right)
{
    return (std::isnan(left) && std::isnan(right))
        || (left == right && std::signbit(left) == std::signbit(right));
}

// The largest that three digits and a tenth can say is nine billion.
bool isAllowed(float pressure)
{
    return !std::isfinite(pressure) || std::abs(pressure) <= 9.0e9f;
}

// The bytes of a file; nobody promises the sign of what is no number.
std::string fileOf(std::u16string const& text)
{
    std::string bytes = "\xff\xfe";
    for (auto const unit : text) {
        bytes += static_cast<char>(unit & 0xffU);
        bytes += static_cast<char>(unit >> 8U);
    }
    return bytes;
}

std::string withoutSignOfNan(std::string bytes)
{
    std::string const negative("-\0n\0a\0n\0", 8);
    for (auto at = bytes.find(negative); at != std::string::npos; at = bytes.find(negative, at))
        bytes.erase(at, 2);
    return bytes;
}

// In virtual time a rest that ends in the very moment of a tick may come before or after it.
bool isUndecided(std::vector<Reading> const& readings)
{
    for (std::size_t from = 0; from < readings.size(); ++from) {
        for (std::size_t to = from + 1; to < readings.size(); ++to) {
            auto const distance = readings[to].milliseconds - readings[from].milliseconds;
            if (distance > 0 && distance % 1000 == 0)
                return true;
        }
    }
    return false;
}

std::string differenceOfReadings(std::vector<Reading> const& expected, Outcome const& outcome)
{
    if (outcome.published.size() != expected.size() || outcome.shown.size() != expected.size())
        return "published another number of pressures";
    for (std::size_t index = 0; index < expected.size(); ++index) {
        auto const [time, pressure] = outcome.published[index];
        if (!isAllowed(pressure))
            return "published what the format cannot say";
        if (!isSame(pressure, expected[index].pressure))
            return "published another pressure";
        if (time != expected[index].milliseconds)
            return "published at another time";
        if (!isSame(outcome.shown[index], pressure > 0.0f ? pressure : 0.0f))
            return "showed another pressure";
    }
    return {};
}

std::string differenceOfMeasurements(
    std::vector<NaiveMeasurement> const& expected, std::vector<NaiveMeasurement> const& found)
{
    if (found.size() != expected.size())
        return "another number of measurements";
    for (std::size_t index = 0; index < expected.size(); ++index) {
        if (found[index].number != expected[index].number
            || !isSame(found[index].best, expected[index].best)
            || !std::ranges::equal(found[index].points, expected[index].points, isSame))
            return "another measurement";
    }
    return {};
}

std::string differenceOfFiles(
    FuzzInput const& input, std::vector<NaiveMeasurement> const& expected, Outcome const& outcome)
{
    if (expected.empty())
        return outcome.csv.empty() && outcome.selectedCsv.empty() ? "" : "saved nothing to a file";
    auto const target = input.targetPressure * input.targetPressurePercent;
    if (withoutSignOfNan(outcome.csv) != withoutSignOfNan(fileOf(naiveCsv(expected, target, head))))
        return "another CSV file";
    if (outcome.selectedCsv != fileOf(naiveSelectedCsv(expected, head)))
        return "another CSV file of the selection";
    return {};
}

} // namespace

std::string differenceFromNaive(std::string_view bytes)
{
    auto const input = readFuzzInput(bytes);
    auto const expected = readNaively(input);
    auto const outcome = play(input);
    if (auto difference = differenceOfReadings(expected, outcome); !difference.empty())
        return difference;
    if (outcome.timersLeft != 1)
        return "a timer besides the clock outlived the session";
    if (isUndecided(expected))
        return {};
    auto const measurements = cutNaively(expected);
    auto difference = differenceOfMeasurements(measurements, outcome.measurements);
    return difference.empty() ? differenceOfFiles(input, measurements, outcome) : difference;
}

} // namespace tensio::fuzz
