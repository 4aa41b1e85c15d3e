// Turning the page of the history strip: five new tiles.
// QT_QPA_PLATFORM=offscreen build/default/bin/history_bench

#include "panels/HistoryViewController.h"
#include "support/Session.h"

#include <QWidget>

#include <benchmark/benchmark.h>

using namespace tensio;

namespace {

void turnPage(benchmark::State& state)
{
    Session session;
    QWidget view;
    StatusViewModel status(session.manager);
    HistoryViewController const controller(session.manager, status, view);
    session.connect();
    for (int press = 0; press < 99; ++press)
        session.press({20.0});
    int step = 1;
    while (state.KeepRunning()) {
        step = -step;
        session.manager.changeSliceStartingIndex.apply(step);
    }
}

BENCHMARK(turnPage)->Unit(benchmark::kMillisecond);

} // namespace
