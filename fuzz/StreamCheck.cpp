#include "core/DeviceRecord.h"
#include "platform/RecordGatherer.h"
#include "support/Session.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <iterator>
#include <stdexcept>

// Plays bytes through gathering, records and session in virtual time. The first byte is the set-up;
// each write is a byte (three bits of pause, five of length) and as many bytes as the length says.

// NOLINTNEXTLINE(readability-identifier-naming): libFuzzer calls it.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size);

namespace tensio {

namespace {

std::string_view take(std::string_view& bytes, std::size_t count)
{
    auto const taken = bytes.substr(0, count);
    bytes.remove_prefix(taken.size());
    return taken;
}

unsigned takeByte(std::string_view& bytes)
{
    return bytes.empty() ? 0U : static_cast<unsigned char>(take(bytes, 1).front());
}

// Around the silence that ends an incomplete record (20 ms) and the tick that ends a press.
double pauseOf(unsigned head)
{
    constexpr std::array pauses {0.0, 0.003, 0.01, 0.019, 0.02, 0.023, 0.45, 0.997};
    return pauses.at(head >> 5U);
}

// A session behind a port's gatherer, set up by a fuzzer's first byte, in virtual time.
struct Line : Session {
    explicit Line(std::string_view& bytes)
        : setUp(takeByte(bytes))
    {
        constexpr std::array targets {30.0f, 42.5f, 10.0f, 80.0f};
        constexpr std::array percents {1.0f, 0.8f, 0.01f, 0.7f};
        connect(targets.at(setUp >> 1U & 3U));
        manager.username.setValue("氏\t名𠮷");
        manager.changeTargetPressurePercentAction.apply(percents.at(setUp >> 3U & 3U));
    }

    unsigned const setUp;
    bool const endsByPulling = (setUp & 1U) != 0;
    std::vector<float> readings;
    // The first property that did not hold.
    std::string broken;
    RecordGatherer gatherer {runLoop, deviceRecordFormat,
        [this](std::string_view chunk) { port->delegate->serialPortDidReceiveData(chunk); }};
    Subscription observing {
        manager.serialPortManager.pressure.observeChanges([this](float pressure) {
            readings.push_back(pressure);
            require(manager.currentPressure.value() == (pressure > 0.0f ? pressure : 0.0f),
                "what is shown is the reading, never below 0");
        })};

    void require(bool holds, char const* property)
    {
        if (!holds && broken.empty())
            broken = property;
    }
    void write(double pauseSeconds, std::string_view bytes)
    {
        runLoop.advance(Seconds(pauseSeconds));
        if (!bytes.empty())
            gatherer.receive(bytes);
    }
    void probe()
    {
        write(0.025, {});
        auto const read = readings.size();
        write(0.0, deviceRecord(12.3));
        require(readings.size() == read + 1 && readings.back() == 12.3f,
            "after 25 ms of silence a record is read");
    }
    std::string end()
    {
        if (endsByPulling) {
            gatherer.flush();
            port->playLoss();
        } else {
            gatherer.discard();
            finish();
        }
        require(runLoop.liveTimers() == 1, "no timer but the clock's is left");
        checkMeasurements();
        return broken;
    }

    void checkMeasurements()
    {
        auto measurements = manager.measurementList.measurements();
        auto const target = manager.targetPressure.value() * manager.targetPressurePercent.value();
        int number = 0;
        for (auto const& measurement : measurements) {
            float best = 0.0f;
            for (auto const point : *measurement->pressurePoints)
                best = std::max(best, point);
            require(measurement->number == ++number && measurement->bestPressure == best
                    && best > 0.0f && measurement->targetPressure == target,
                "number, best pressure above 0 and target are right");
        }
        measurements.push_back(manager.measurement);
        std::vector<float> points;
        for (auto const& measurement : measurements)
            std::ranges::copy(*measurement->pressurePoints, std::back_inserter(points));
        // NaN equals nothing but by its bits.
        auto const bits = [](float pressure) { return std::bit_cast<unsigned>(pressure); };
        require(std::ranges::equal(points, readings, {}, bits, bits),
            "every reading stands in one measurement, in order");
    }
};

// The bytes as they are, with a record after 25 ms of silence: at the end, or at every pause.
std::string playBytes(std::string_view bytes)
{
    Line line(bytes);
    while (!bytes.empty()) {
        auto const head = takeByte(bytes);
        if ((line.setUp & 32U) != 0 && pauseOf(head) > 0.025)
            line.probe();
        line.write(pauseOf(head), take(bytes, head & 31U));
    }
    if (!line.endsByPulling)
        line.probe();
    return line.end();
}

// Well-formed records with the same cuts and pauses.
std::string playRecords(std::string_view bytes)
{
    Line line(bytes);
    std::string wire;
    std::vector<float> sent;
    for (std::size_t written = 0; !bytes.empty();) {
        auto const head = takeByte(bytes);
        // Sign, digits and the sixth byte of a record come from four of the fuzzer's bytes.
        auto const length = (head & 31U) % 8;
        while (wire.size() < written + length) {
            auto const sign = takeByte(bytes) % 4 == 0 ? -1.0 : 1.0;
            auto const high = takeByte(bytes) % 39;
            auto const pressure = sign * (high * 256 + takeByte(bytes)) / 10.0;
            wire += deviceRecord(pressure);
            wire.back() = static_cast<char>(takeByte(bytes) & 0x7fU);
            sent.push_back(static_cast<float>(pressure));
        }
        line.write(pauseOf(head), std::string_view(wire).substr(written, length));
        written += length;
        auto const& readings = line.readings;
        line.require(readings.size() == written / deviceRecordWidth
                && (readings.empty() || readings.back() == sent.at(readings.size() - 1)),
            "a record is read as soon as it is whole, however it was cut");
    }
    return line.end();
}

} // namespace

} // namespace tensio

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    std::string_view const bytes(reinterpret_cast<char const*>(data), size);
    for (auto* const play : {&tensio::playRecords, &tensio::playBytes}) {
        if (auto const broken = play(bytes); !broken.empty())
            throw std::logic_error("Does not hold: " + broken);
    }
    return 0;
}
