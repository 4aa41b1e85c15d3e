#include "core/DeviceRecord.h"
#include "platform/RecordGatherer.h"
#include "support/Session.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <iterator>
#include <stdexcept>
#include <string>

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

void require(bool holds, char const* property)
{
    if (!holds)
        throw std::logic_error(std::string("Does not hold: ") + property);
}

// A session behind a port's gatherer, set up by a fuzzer's first byte, in virtual time.
struct Line : Session {
    explicit Line(std::string_view& bytes)
        : setUp(takeByte(bytes))
    {
        connect(42.5f);
        manager.changeTargetPressurePercentAction.apply(0.7f);
    }

    unsigned const setUp;
    bool const endsByPulling = (setUp & 1U) != 0;
    std::vector<float> readings;
    RecordGatherer gatherer {runLoop, deviceRecordFormat,
        [this](std::string_view chunk) { port->delegate->serialPortDidReceiveData(chunk); }};
    Subscription observing {
        manager.serialPortManager.pressure.observeChanges([this](float pressure) {
            readings.push_back(pressure);
            require(manager.currentPressure.value() == (pressure > 0.0f ? pressure : 0.0f),
                "what is shown is the reading, never below 0");
        })};

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
    void end()
    {
        if (endsByPulling) {
            gatherer.flush();
            port->playLoss();
        } else {
            gatherer.discard();
            finish();
        }
        require(runLoop.liveTimers() == 1, "no timer but the clock's is left");
        std::vector<float> points;
        int number = 0;
        for (auto const& measurement : manager.measurementList.measurements()) {
            auto const& pressures = *measurement->pressurePoints;
            float best = 0.0f;
            for (auto const pressure : pressures)
                best = std::max(best, pressure);
            require(measurement->number == ++number && measurement->bestPressure == best
                    && best > 0.0f && measurement->targetPressure == 42.5f * 0.7f,
                "number, best pressure above 0 and target are right");
            points.insert(points.end(), pressures.begin(), pressures.end());
        }
        std::ranges::copy(*manager.measurement->pressurePoints, std::back_inserter(points));
        // NaN equals nothing but by its bits.
        auto const bits = [](float pressure) { return std::bit_cast<unsigned>(pressure); };
        require(std::ranges::equal(points, readings, {}, bits, bits),
            "every reading stands in one measurement, in order");
    }
};

// The bytes as they are, with a record after 25 ms of silence: at the end, or at every pause.
void playBytes(std::string_view bytes)
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
    line.end();
}

// Well-formed records with the same cuts and pauses.
void playRecords(std::string_view bytes)
{
    Line line(bytes);
    std::string wire;
    std::vector<float> sent;
    for (std::size_t written = 0; !bytes.empty();) {
        auto const head = takeByte(bytes);
        // Sign and digits of a record come from two of the fuzzer's bytes, its sixth from one.
        auto const length = (head & 31U) % 8;
        while (wire.size() < written + length) {
            auto const pressure = (takeByte(bytes) * 77.0 + takeByte(bytes) - 9999.0) / 10.0;
            wire += deviceRecord(pressure);
            wire.back() = static_cast<char>(takeByte(bytes) & 0x7fU);
            sent.push_back(static_cast<float>(pressure));
        }
        line.write(pauseOf(head), std::string_view(wire).substr(written, length));
        written += length;
        auto const& readings = line.readings;
        require(readings.size() == written / deviceRecordWidth
                && (readings.empty() || readings.back() == sent.at(readings.size() - 1)),
            "a record is read as soon as it is whole, however it was cut");
    }
    line.end();
}

} // namespace

} // namespace tensio

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    std::string_view const bytes(reinterpret_cast<char const*>(data), size);
    tensio::playRecords(bytes);
    tensio::playBytes(bytes);
    return 0;
}
