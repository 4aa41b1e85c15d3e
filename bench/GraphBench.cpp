// Frames of the graph on a shown window, 440 high, at scales 1 and 2: rendering one reading,
// repainting the window. Beside them the floor: two copies of the graph's size and two lines. 600
// points make a sweep of 30 s; 960 sweeps are eight hours.
//   QT_QPA_PLATFORM=offscreen build/default/bin/graph_bench
//     --benchmark_filter='floor|Frame'   every frame of the running trace
//     --benchmark_filter=afterChange     from a change of scale to the exact picture
//     --benchmark_filter=afterAnHour     from an hour without a frame to the exact picture
// The times are of single frames: median, 99th percentile and longest, in milliseconds of processor
// time; an iteration is as many frames as it takes until the picture is exact.

#include "ProcessorTime.h"
#include "feedback/GraphView.h"
#include "toolkit/DesignFrame.h"
#include "toolkit/ImageView.h"

#include <QApplication>
#include <QPainter>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cmath>
#include <random>

using namespace tensio;

namespace {

constexpr QSize designSize(524, 440);
constexpr int pointsPerSweep = 600;

class RealClock : public Scheduler {
public:
    Seconds now() const override { return std::chrono::steady_clock::now().time_since_epoch(); }
    Subscription scheduleAfter(Seconds, std::function<void()>) override { return {}; }
};

float pressing(int index)
{
    auto const phase = index % 110;
    return phase < 70 ? 35.0f + 2.0f * std::sin(static_cast<float>(index)) : 0.0f;
}

float noise(int)
{
    static std::mt19937 random(1);
    return std::uniform_real_distribution(0.0f, 80.0f)(random);
}

// The graph alone in a shown window.
struct Trace {
    RealClock clock;
    QWidget window;
    ImageView maxImage {&window};
    ImageView targetImage {&window};
    GraphView view {&window};
    float (*pressure)(int);
    int points = 0;

    Trace(float (*thePressure)(int), std::int64_t sweeps, std::int64_t scale)
        : pressure(thePressure)
    {
        setDesignFrame(view, QRectF(QPointF(0.0, 0.0), designSize));
        view.resize(designSize * static_cast<int>(scale));
        window.resize(view.size());
        view.targetPressure.setValue(30.0f);
        view.targetColor.setValue(Qt::red);
        view.setUp(maxImage, targetImage);
        add(static_cast<int>(sweeps) * pointsPerSweep);
        window.show();
        QCoreApplication::processEvents();
        showFrame();
    }

    void showFrame()
    {
        view.renderFrame();
        QCoreApplication::sendPostedEvents();
    }

    void add(int count)
    {
        for (int const end = points + count; points < end; ++points)
            view.plotter()->addPressurePoint(pressure(points));
    }
};

// An iteration prepares and shows frames until the picture is exact; the time is that of showing.
void timeFrames(benchmark::State& state, auto prepare, auto show, auto isExact)
{
    std::vector<double> milliseconds;
    while (state.KeepRunning()) {
        double total = 0.0;
        do {
            prepare();
            auto const begin = processorTime();
            show();
            auto const taken = processorTime() - begin;
            milliseconds.push_back(taken * 1e3);
            total += taken;
        } while (!isExact());
        state.SetIterationTime(total);
    }
    std::ranges::sort(milliseconds);
    auto const count = milliseconds.size();
    state.counters["median"] = milliseconds[count / 2];
    state.counters["p99"] = milliseconds[count * 99 / 100];
    state.counters["longest"] = milliseconds.back();
    state.counters["frames"]
        = benchmark::Counter(static_cast<double>(count), benchmark::Counter::kAvgIterations);
}

bool always()
{
    return true;
}

void frame(benchmark::State& state, float (*pressure)(int))
{
    Trace trace(pressure, state.range(0), state.range(1));
    timeFrames(
        state, [&] { trace.add(1); }, [&] { trace.showFrame(); }, always);
}

// Changes the trace, then adds a point for each frame until the picture is exact.
void timeUntilExact(benchmark::State& state, Trace& trace, auto change)
{
    trace.view.setClock(trace.clock);
    timeFrames(
        state,
        [&] {
            if (trace.view.isSettled())
                change();
            trace.add(1);
        },
        [&] { trace.showFrame(); }, [&] { return trace.view.isSettled(); });
}

void afterChange(benchmark::State& state, float (*pressure)(int))
{
    Trace trace(pressure, state.range(0), state.range(1));
    timeUntilExact(state, trace, [&, upperBound = 80.0f]() mutable {
        upperBound = 165.0f - upperBound;
        trace.view.upperBoundPressure.setValue(upperBound);
        trace.view.plotter()->setUpperBoundPressure(upperBound);
    });
}

void afterAnHour(benchmark::State& state, float (*pressure)(int))
{
    Trace trace(pressure, 1, state.range(0));
    timeUntilExact(state, trace, [&] { trace.add(120 * pointsPerSweep); });
}

void floorOfTwoCopies(benchmark::State& state)
{
    auto const size = designSize * static_cast<int>(state.range(0));
    QImage background(size, QImage::Format_RGB32);
    background.fill(Qt::darkBlue);
    QImage sweeps(size, QImage::Format_ARGB32_Premultiplied);
    sweeps.fill(Qt::transparent);
    QImage picture(size, QImage::Format_RGB32);
    auto const copyTwice = [&] {
        QPainter painter(&picture);
        painter.drawImage(0, 0, background);
        painter.setPen(QPen(Qt::red, 4.0));
        painter.drawLine(0, 100, size.width(), 100);
        painter.drawLine(0, 200, size.width(), 200);
        painter.drawImage(0, 0, sweeps);
        benchmark::DoNotOptimize(picture.constBits());
    };
    timeFrames(
        state, [] {}, copyTwice, always);
}

void atFixedLength(benchmark::internal::Benchmark* bench)
{
    // Two sweeps' worth of frames, so that the number of sweeps stays what it says.
    bench->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(2L * pointsPerSweep);
}

BENCHMARK(floorOfTwoCopies)->Apply(atFixedLength)->Arg(1)->Arg(2);
BENCHMARK_CAPTURE(frame, pressing, pressing)
    ->Name("pressingFrame")
    ->Apply(atFixedLength)
    ->ArgsProduct({{1, 10, 100, 960}, {1, 2}});
BENCHMARK_CAPTURE(frame, noise, noise)
    ->Name("noiseFrame")
    ->Apply(atFixedLength)
    ->ArgsProduct({{1, 10}, {1, 2}});
BENCHMARK_CAPTURE(afterChange, pressing, pressing)
    ->Apply(atFixedLength)
    ->Iterations(2)
    ->ArgsProduct({{1, 10, 100, 960}, {1, 2}});
BENCHMARK_CAPTURE(afterAnHour, noise, noise)->Apply(atFixedLength)->Iterations(1)->Arg(2);

} // namespace
