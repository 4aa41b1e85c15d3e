#include "StreamCheck.h"

#include "core/DeviceRecord.h"
#include "platform/RecordGatherer.h"
#include "support/Session.h"

#include <array>
#include <charconv>
#include <cmath>

namespace tensio::fuzz {

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

bool isSame(float left, float right)
{
    return left == right || (std::isnan(left) && std::isnan(right));
}

// The cells of a file that is UTF-16, or of as much of it as is.
std::vector<std::vector<std::string>> cellsOf(std::string_view csv)
{
    std::vector<std::vector<std::string>> rows(1, std::vector<std::string>(1));
    for (std::size_t at = 2; at + 1 < csv.size(); at += 2) {
        // Only ASCII is looked at; the rest stands for itself.
        auto const unit = csv[at + 1] == 0 ? csv[at] : '?';
        if (unit == '\t')
            rows.back().emplace_back();
        else if (unit == '\n')
            rows.emplace_back(1);
        else if (unit != '\r')
            rows.back().back() += unit;
    }
    return rows;
}

bool reads(std::string const& cell, float value)
{
    float found = 0.0f;
    auto const* const end = cell.data() + cell.size();
    auto const result = std::from_chars(cell.data(), end, found, std::chars_format::fixed);
    return result.ec == std::errc() && result.ptr == end
        && (isSame(found, value) || std::abs(found - value) <= 0.0501f + std::abs(value) * 1e-6f);
}

// Around the silence that ends an incomplete record (20 ms) and the tick that ends a press.
double pauseOf(unsigned head)
{
    constexpr std::array pauses {0.0, 0.003, 0.01, 0.019, 0.02, 0.023, 0.45, 0.997};
    return pauses.at(head >> 5U);
}

// A session behind a port's gatherer, set up by a fuzzer's first byte, in virtual time.
class Line {
public:
    std::vector<std::pair<double, float>> readings;
    // The first property that did not hold.
    std::string broken;

    explicit Line(std::string_view& bytes)
        : m_setUp(takeByte(bytes))
    {
        constexpr std::array targets {30.0f, 42.5f, 10.0f, 80.0f};
        constexpr std::array percents {1.0f, 0.8f, 0.01f, 0.7f};
        auto const percent = percents.at(m_setUp >> 3U & 3U);
        m_session.connect(targets.at(m_setUp >> 1U & 3U));
        m_session.manager.username.setValue("氏\t名𠮷");
        m_session.manager.changeTargetPressurePercentAction.apply(percent);
        m_target = m_session.manager.targetPressure.value() * percent;
        m_observing = m_session.manager.serialPortManager.pressure.observeChanges(
            [this](float pressure) { checkReading(pressure); });
    }

    bool endsByPulling() const { return (m_setUp & 1U) != 0; }
    bool probesEveryPause() const { return (m_setUp & 32U) != 0; }

    void require(bool holds, char const* property)
    {
        if (!holds && broken.empty())
            broken = property;
    }
    void pause(double seconds) { m_session.runLoop.advance(Seconds(seconds)); }
    void write(std::string_view bytes)
    {
        if (!bytes.empty())
            m_gatherer.receive(bytes);
    }
    void probe()
    {
        pause(0.025);
        auto const before = readings.size();
        write(deviceRecord(12.3));
        require(readings.size() == before + 1 && readings.back().second == 12.3f,
            "after 25 ms of silence a record is read");
    }
    std::string end()
    {
        if (endsByPulling()) {
            m_gatherer.flush();
            m_session.port->playLoss();
        } else {
            m_gatherer.discard();
            m_session.manager.disconnectAction.apply(Nothing {});
        }
        require(m_session.runLoop.liveTimers() == 1, "no timer but the clock's is left");
        checkMeasurements();
        checkFile();
        return broken;
    }

private:
    void checkReading(float pressure)
    {
        readings.emplace_back(m_session.runLoop.now().count(), pressure);
        // Three characters and a tenth say at most nine billion.
        require(!std::isfinite(pressure) || std::abs(pressure) < 9.1e9f,
            "a reading is one that a record can say");
        require(
            isSame(m_session.manager.currentPressure.value(), pressure > 0.0f ? pressure : 0.0f),
            "what is shown is the reading, never below 0");
    }
    void checkMeasurements()
    {
        auto measurements = m_session.manager.measurementList.measurements();
        auto const finished = std::ssize(measurements);
        measurements.push_back(m_session.manager.measurement);
        int number = 0;
        auto reading = readings.begin();
        for (auto const& measurement : measurements) {
            float best = 0.0f;
            bool isFirst = true;
            for (auto const point : *measurement->pressurePoints) {
                if (reading == readings.end() || !isSame(reading->second, point))
                    return require(false, "every reading stands in one measurement, in order");
                auto const gap = reading == readings.begin()
                    ? 1.0
                    : reading->first - std::prev(reading)->first;
                require(isFirst ? gap > 0.999 : gap < 2.001 || best == 0.0f,
                    "a press ends after 1 to 2 s of silence");
                best = point > best ? point : best;
                isFirst = false;
                ++reading;
            }
            require(++number > finished
                    || (measurement->number == number && measurement->bestPressure == best
                        && best > 0.0f && measurement->targetPressure == m_target),
                "number, best pressure above 0 and target are right");
        }
        require(reading == readings.end(), "every reading stands in a measurement");
    }
    void checkFile()
    {
        m_session.saving.answer = "file.csv";
        m_session.manager.saveCsv();
        auto const rows = cellsOf(m_session.saving.written);
        std::size_t column = 1;
        for (auto const& measurement : m_session.manager.measurementList.measurements()) {
            bool isRight = reads(rows.at(4).at(column), *measurement->bestPressure)
                && reads(rows.at(5).at(column), m_target);
            auto const& points = *measurement->pressurePoints;
            isRight = isRight && rows.size() >= points.size() + 8;
            for (std::size_t row = 7; isRight && row + 1 < rows.size(); ++row) {
                auto const& cell = rows[row].at(column);
                isRight = row < points.size() + 7 ? reads(cell, points[row - 7]) : cell.empty();
            }
            require(isRight, "the file says what was measured");
            column += 3;
        }
    }

    unsigned m_setUp;
    Session m_session;
    float m_target = 0.0f;
    RecordGatherer m_gatherer {
        m_session.runLoop, deviceRecordFormat, [this](std::string_view chunk) {
            m_session.port->delegate->serialPortDidReceiveData(chunk);
        }};
    Subscription m_observing;
};

// The bytes as they are, with a record after 25 ms of silence: at the end, or at every pause.
std::string playBytes(std::string_view bytes)
{
    Line line(bytes);
    while (!bytes.empty()) {
        auto const head = takeByte(bytes);
        if (line.probesEveryPause() && pauseOf(head) > 0.025)
            line.probe();
        line.pause(pauseOf(head));
        line.write(take(bytes, head & 31U));
    }
    if (!line.endsByPulling())
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
        line.pause(pauseOf(head));
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
        line.write(std::string_view(wire).substr(written, length));
        written += length;
        auto const& readings = line.readings;
        line.require(readings.size() == written / deviceRecordWidth
                && (readings.empty() || readings.back().second == sent.at(readings.size() - 1)),
            "a record is read as soon as it is whole, however it was cut");
    }
    return line.end();
}

} // namespace

std::string brokenProperty(std::string_view bytes)
{
    auto const broken = playRecords(bytes);
    return broken.empty() ? playBytes(bytes) : broken;
}

} // namespace tensio::fuzz
