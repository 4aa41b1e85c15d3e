#pragma once

#include "platform/Alerts.h"
#include "platform/CaptureRectangle.h"
#include "platform/Clock.h"
#include "platform/PdfRenderer.h"
#include "platform/RunLoop.h"
#include "platform/Saving.h"
#include "platform/Screen.h"
#include "platform/SerialPort.h"
#include "platform/UserDefaults.h"

#include <iomanip>
#include <map>
#include <sstream>
#include <string>
#include <typeinfo>
#include <utility>
#include <vector>

namespace tensio {

struct ManualClock : Clock {
    // In whatever time zone the tests run.
    Date date {localTime("2024-03-05 14:07:09")};

    Date now() const override { return date; }

    static Date localTime(char const* text)
    {
        std::tm parts {};
        std::istringstream(text) >> std::get_time(&parts, "%Y-%m-%d %H:%M:%S");
        parts.tm_isdst = -1;
        return std::chrono::system_clock::from_time_t(std::mktime(&parts));
    }
};

// A port without a line: records the calls, and a test plays the events through its delegate.
struct FakeSerialPort : SerialPort {
    explicit FakeSerialPort(std::string name)
        : m_name(std::move(name))
    {
    }

    bool isSimulator = false;
    std::vector<std::string> calls;
    SerialPortDelegate* delegate = nullptr;

    std::string name() const override { return m_name; }
    bool isVirtual() const override { return isSimulator; }
    void setDelegate(SerialPortDelegate* newDelegate) override { delegate = newDelegate; }
    void setBaudRate(int rate) override { calls.push_back("baud rate " + std::to_string(rate)); }
    void setParity(Parity parity) override
    {
        calls.emplace_back(parity == Parity::None ? "no parity" : "parity");
    }
    void setNumberOfStopBits(int n) override { calls.push_back("stop bits " + std::to_string(n)); }
    void open() override { calls.emplace_back("open"); }
    void close() override { calls.emplace_back("close"); }

    void playLoss() const
    {
        // As the real port does: first the device goes, then its port.
        auto* const listener = delegate;
        listener->serialPortWasRemovedFromSystem();
        listener->serialPortWasClosed();
    }

private:
    std::string m_name;
};

struct FakeSerialPortList : SerialPortList {
    std::vector<std::shared_ptr<SerialPort>> ports;

    std::vector<std::shared_ptr<SerialPort>> availablePorts() override { return ports; }
};

struct MemoryUserDefaults : UserDefaults {
    std::map<std::string, float> stored;
    int synchronizations = 0;

    float floatForKey(std::string const& key) const override
    {
        return stored.contains(key) ? stored.at(key) : 0.0f;
    }
    void setFloat(std::string const& key, float value) override { stored[key] = value; }
    void synchronize() override { ++synchronizations; }
};

// Like the real ones, they announce that timers pause.
struct FakeAlerts : Alerts {
    explicit FakeAlerts(RunLoop& runLoop)
        : m_runLoop(runLoop)
    {
    }
    std::vector<std::string> messages;
    AlertStyle style {};
    std::vector<std::string> buttons;
    std::size_t answer = 0;
    std::function<void()> whileOpen;

    std::size_t runModal(AlertStyle newStyle, std::string const& message,
        std::vector<std::string> const& newButtons) override
    {
        style = newStyle;
        buttons = newButtons;
        messages.push_back(message);
        m_runLoop.willPause.observer.sendValue({});
        if (whileOpen)
            whileOpen();
        return answer;
    }

private:
    RunLoop& m_runLoop;
};

// Makes a file that says what kind of view it was made of.
struct FakePdfRenderer : PdfRenderer {
    bool hasRoom = true;
    bool fails = false;

    bool hasRoomFor(PrintView&) const override { return hasRoom; }
    std::optional<std::string> render(PrintView& view) const override
    {
        return fails ? std::nullopt : std::optional<std::string>(typeid(view).name());
    }
};

// Panel, disk and screen at once, so that the order of what is asked of them can be seen. While the
// panel is open, another program copies something.
struct FakeSaving
    : SavePanel
    , FileWriter
    , Screen {
    std::vector<std::string> log;
    std::optional<std::string> answer;
    std::string written;
    bool diskIsFull = false;
    bool isSimulated = false;
    ScreenRect frame;
    std::optional<std::string> picture;
    std::optional<std::string> clipboard;

    std::optional<std::string> runModal(std::string const& fileType) override
    {
        if (isSimulated)
            log.emplace_back("of simulated readings:");
        log.push_back("panel " + fileType);
        clipboard = "copied meanwhile";
        return answer;
    }
    bool setSimulated(bool isNowSimulated) override
    {
        return std::exchange(isSimulated, isNowSimulated);
    }
    bool writeAtomically(std::string const& path, std::string_view bytes) override
    {
        log.push_back("write " + path);
        if (!diskIsFull)
            written = bytes;
        return !diskIsFull;
    }
    ScreenRect mainWindowFrame() const override { return frame; }
    double mainScreenHeight() const override { return 1080.0; }
    void captureToClipboard(ScreenRect const& area) override
    {
        log.push_back("capture " + captureRectangle(area));
        clipboard = picture;
    }
    std::optional<std::string> clipboardPng() const override { return clipboard; }
};

} // namespace tensio
