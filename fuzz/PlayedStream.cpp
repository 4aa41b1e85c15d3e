#include "PlayedStream.h"

#include "core/DeviceRecord.h"
#include "platform/RecordGatherer.h"
#include "support/Session.h"

#include <array>

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

// A session behind a port's gatherer, set up by the first byte.
class Line {
public:
    PlayedStream played;

    explicit Line(std::string_view& bytes)
        : m_setUp(takeByte(bytes))
    {
        constexpr std::array targets {30.0f, 42.5f, 10.0f, 80.0f};
        constexpr std::array percents {1.0f, 0.8f, 0.01f, 0.7f};
        auto const target = targets.at(m_setUp >> 1U & 3U);
        auto const percent = percents.at(m_setUp >> 3U & 3U);
        played.target = target * percent;
        m_session.connect(target);
        m_session.manager.username.setValue("氏\t名𠮷");
        m_session.manager.changeTargetPressurePercentAction.apply(percent);
        m_observing
            = m_session.manager.serialPortManager.pressure.observeChanges([this](float kPa) {
                  played.readings.push_back({m_session.runLoop.now().count(), kPa,
                      m_session.manager.currentPressure.value()});
              });
    }

    bool endsByPulling() const { return (m_setUp & 1U) != 0; }
    bool probesEveryPause() const { return (m_setUp & 32U) != 0; }

    void pause(int milliseconds) { m_session.runLoop.advance(Seconds(milliseconds / 1000.0)); }
    void write(std::string_view bytes) { m_gatherer.receive(bytes); }

    void probe()
    {
        pause(25);
        auto const before = played.readings.size();
        write(deviceRecord(12.3));
        if (played.readings.size() != before + 1 || played.readings.back().pressure != 12.3f)
            played.failure = "after 25 ms of silence a record is read";
    }

    PlayedStream end()
    {
        auto& manager = m_session.manager;
        if (endsByPulling()) {
            m_gatherer.flush();
            m_session.port->playLoss();
        } else {
            m_gatherer.discard();
            manager.disconnectAction.apply(Nothing {});
        }
        played.finished = manager.measurementList.measurements();
        played.unfinishedPoints = *manager.measurement->pressurePoints;
        m_session.saving.answer = "file.csv";
        manager.saveCsv();
        played.csv = m_session.saving.written;
        played.timersLeft = m_session.runLoop.liveTimers();
        return played;
    }

private:
    unsigned m_setUp;
    Session m_session;
    RecordGatherer m_gatherer {
        m_session.runLoop, deviceRecordFormat, [this](std::string_view chunk) {
            m_session.port->delegate->serialPortDidReceiveData(chunk);
        }};
    Subscription m_observing;
};

// Around the silence that ends an incomplete record (20 ms) and the tick that ends a press (1 s).
int pauseOf(unsigned head)
{
    constexpr std::array pauses {0, 3, 10, 19, 20, 23, 450, 997};
    return pauses.at(head >> 5U);
}

} // namespace

PlayedStream playBytes(std::string_view bytes)
{
    Line line(bytes);
    while (!bytes.empty()) {
        auto const head = takeByte(bytes);
        if (line.probesEveryPause() && pauseOf(head) > 25)
            line.probe();
        line.pause(pauseOf(head));
        if (auto const written = take(bytes, head & 31U); !written.empty())
            line.write(written);
    }
    if (!line.endsByPulling())
        line.probe();
    return line.end();
}

PlayedStream playRecords(std::string_view bytes)
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
        if (length > 0)
            line.write(std::string_view(wire).substr(written, length));
        written += length;
        auto const& readings = line.played.readings;
        if (readings.size() != written / deviceRecordWidth
            || (!readings.empty() && readings.back().pressure != sent.at(readings.size() - 1)))
            line.played.failure = "a record is read as soon as it is whole, however it was cut";
    }
    return line.end();
}

} // namespace tensio::fuzz
