#pragma once

#include "app/Application.h"
#include "platform/PortInspector.h"
#include "platform/SleepInhibitor.h"
#include "printing/PrintPanels.h"
#include "support/FakeSessionStore.h"
#include "support/Session.h"
#include "support/Ui.h"

#include <QApplication>
#include <QMenuBar>
#include <QPrinter>

#include <algorithm>

namespace tensio {

// A session for each name, 20 days apart until now, the first simulated; none is saved. Of the
// newest there is one measurement, of those before it two, three, one and so on.
struct FilledSessionStore : FakeSessionStore {
    explicit FilledSessionStore(std::vector<std::string> const& names)
    {
        for (auto const& name : names) {
            auto const age = static_cast<int>(names.size() - stored.size()) - 1;
            auto const date = ManualClock().date - age * std::chrono::hours(24 * 20);
            auto pressure = 20.0f + 1.5f * static_cast<float>(age);
            std::vector const points {1.0f, pressure / 2.0f, pressure, pressure};
            MeasurementPart part {1, pressure, 30.0f, date, true, 0, points};
            auto const id = *begin({date, name, 30.0f, 1.0f, stored.empty()}, part);
            for (part.number = 2; part.number <= 1 + age % 3; ++part.number) {
                part.best = --pressure;
                write(id, part);
            }
        }
    }
};

// The program among fakes, its window shown.
struct Desk
    : Surroundings
    , PortInspector
    , PrintPanels
    , SleepInhibitor {
    FilledSessionStore store;
    bool isSleepInhibited = false;
    std::vector<InspectedPort> inspected;
    bool hasPrinter = false;
    // The user agrees to every panel of printing, after doing this to the printer.
    std::function<void(QPrinter&)> changePrinter = [](QPrinter&) {};
    Application application {{ports, *this, runLoop, clock, userDefaults, alerts, saving, saving,
        saving, *this, store, *this}};
    TensioManager& manager {application.tensioManager()};
    MainWindow& window {application.window()};

    explicit Desk(std::vector<std::string> const& storedNames = {},
        std::map<std::string, float> const& settings = {})
        : Surroundings(settings)
        , store(storedNames)
    {
        window.show();
        QApplication::setActiveWindow(&window);
    }

    std::string text(char const* label) const { return textOf(window, label); }
    void click(char const* button) const { tensio::click(window, button); }
    void connect(float target = 30.0f) { Surroundings::connect(manager, target); }
    void finish() { manager.disconnectAction.apply(Nothing {}); }

    QList<QAction*> commands() const
    {
        QList<QAction*> all;
        for (auto const* item : window.menuBar()->actions())
            all << item->menu()->actions();
        return all;
    }

    // The first whose title begins like this.
    QAction& command(char const* title) const
    {
        auto const all = commands();
        return **std::ranges::find_if(all, [&](QAction const* command) {
            return command->text().startsWith(QString::fromUtf8(title));
        });
    }

    std::vector<InspectedPort> inspect() override { return inspected; }
    bool hasPrinters() const override { return hasPrinter; }
    void openPageSetup(QPrinter& printer, QWidget&, std::function<void()> agreed) override
    {
        changePrinter(printer);
        agreed();
    }
    void openPrint(QPrinter& printer, int, QWidget& parent, std::function<void()> agreed) override
    {
        openPageSetup(printer, parent, std::move(agreed));
    }
    void setInhibited(bool isInhibited) override { isSleepInhibited = isInhibited; }
};

} // namespace tensio
