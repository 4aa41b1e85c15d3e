// How long each window and menu keeps the main thread at a time when it is opened for the first
// time, and the history strip when its page is turned: the longest turn of the event loop until all
// is drawn.

#include "ProcessorTime.h"
#include "support/Desk.h"
#include "support/Ui.h"
#include "toolkit/Look.h"

#include <QMenu>

#include <benchmark/benchmark.h>

using namespace tensio;

namespace {

using Open = std::function<void(Desk&)>;

Open command(char const* title)
{
    return [title](Desk& desk) { desk.command(title).trigger(); };
}

Open menu(int index)
{
    return [index](Desk& desk) { desk.window.menuBar()->actions().at(index)->menu()->popup({}); };
}

void measure(benchmark::State& state, Open const& open)
{
    Desk desk({"山田 花子"});
    desk.window.resize(1560, 1080);
    desk.connect();
    for (int press = 0; press < 10; ++press)
        desk.press({20.0});
    desk.finish();
    QCoreApplication::processEvents();
    while (state.KeepRunning()) {
        double longest = 0.0;
        auto const time = [&](auto const& turn) {
            auto const start = processorTime();
            turn();
            longest = std::max(longest, processorTime() - start);
        };
        time([&] { open(desk); });
        for (int turn = 0; turn < 500; ++turn)
            time([] { QCoreApplication::processEvents(); });
        state.SetIterationTime(longest);
    }
    for (auto* window : QApplication::topLevelWidgets())
        window->close();
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    applyLook(application);
    std::vector<std::pair<std::string, Open>> openings {{"guide", command("使い方")},
        {"connection check", command("接続の確認")}, {"about", command("tensioについて")},
        {"past sessions", command("以前の測定")}, {"print preview", command("グリッドを印刷")},
        {"page of the history", [](Desk& desk) { click(desk.window, "backButton"); }},
        {"user information", [](Desk& desk) { click(desk.window, "startButton"); }},
        {"percentages",
            [](Desk& desk) { find<QMenu>(find(desk.window, "percentPopup")).popup({}); }}};
    for (int index = 0; index < 6; ++index)
        openings.emplace_back("menu " + std::to_string(index + 1), menu(index));
    for (auto const& [name, open] : openings) {
        benchmark::RegisterBenchmark(
            name.c_str(), [open = open](benchmark::State& state) { measure(state, open); })
            ->UseManualTime()
            ->Iterations(1)
            ->Unit(benchmark::kMillisecond);
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
