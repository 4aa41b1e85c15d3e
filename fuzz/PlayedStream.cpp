#include "PlayedStream.h"

#include "core/DeviceRecord.h"
#include "platform/RecordGatherer.h"
#include "support/Session.h"

namespace tensio::fuzz {

namespace {

constexpr double silenceMilliseconds = 25.0;

// A session behind a port's gatherer.
class Line {
public:
    PlayedStream played;

    explicit Line(FuzzInput const& input)
        : m_input(input)
    {
        m_session.connect(input.targetPressure);
        m_session.manager.username.setValue(subjectName);
        m_session.manager.changeTargetPressurePercentAction.apply(input.targetPressurePercent);
        m_observing
            = m_session.manager.serialPortManager.pressure.observeChanges([this](float kPa) {
                  played.readings.push_back({m_session.runLoop.now().count(), kPa,
                      m_session.manager.currentPressure.value()});
              });
    }

    void pause(double milliseconds) { m_session.runLoop.advance(Seconds(milliseconds / 1000.0)); }
    void write(std::string_view bytes) { m_gatherer.receive(bytes); }

    void probe()
    {
        pause(silenceMilliseconds);
        auto const before = played.readings.size();
        write(deviceRecord(12.3));
        if (played.readings.size() != before + 1 || played.readings.back().pressure != 12.3f)
            played.failure = "after 25 ms of silence a record is read";
    }

    PlayedStream end()
    {
        auto& manager = m_session.manager;
        if (m_input.endsByPulling) {
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
    FuzzInput const& m_input;
    Session m_session;
    RecordGatherer m_gatherer {
        m_session.runLoop, deviceRecordShape, [this](std::string_view chunk) {
            m_session.port->delegate->serialPortDidReceiveData(chunk);
        }};
    Subscription m_observing;
};

} // namespace

PlayedStream playBytes(FuzzInput const& input)
{
    Line line(input);
    for (auto const& [pause, bytes] : input.writes) {
        if (input.probesEverySilence && pause >= silenceMilliseconds)
            line.probe();
        line.pause(pause);
        line.write(bytes);
    }
    line.pause(input.restMilliseconds);
    if (!input.endsByPulling)
        line.probe();
    return line.end();
}

PlayedStream playRecords(FuzzInput const& input)
{
    Line line(input);
    std::string seed;
    for (auto const& write : input.writes)
        seed += write.bytes;
    // Sign, digits and the sixth byte of each record come from the bytes that it replaces.
    std::string wire;
    std::vector<float> expected;
    for (std::size_t at = 0; at + deviceRecordWidth <= seed.size(); at += deviceRecordWidth) {
        auto const byte
            = [&](std::size_t index) { return static_cast<unsigned char>(seed[at + index]); };
        auto const tenths = (byte(0) * 256 + byte(1)) % 10'000;
        auto const pressure = (byte(2) % 4 == 0 ? -tenths : tenths) / 10.0;
        auto record = deviceRecord(pressure);
        record.back() = static_cast<char>(byte(3) & 0x7fU);
        wire += record;
        expected.push_back(static_cast<float>(pressure));
    }
    wire += deviceRecord(99.9).substr(0, seed.size() - wire.size());

    std::size_t written = 0;
    for (auto const& [pause, bytes] : input.writes) {
        line.pause(pause);
        line.write(std::string_view(wire).substr(written, bytes.size()));
        written += bytes.size();
        if (line.played.readings.size() != written / deviceRecordWidth)
            line.played.failure = "a record is read as soon as it is whole";
    }
    for (std::size_t index = 0; index < line.played.readings.size(); ++index) {
        if (line.played.readings[index].pressure != expected[index])
            line.played.failure = "records are read however they are cut";
    }
    line.pause(input.restMilliseconds);
    return line.end();
}

} // namespace tensio::fuzz
