// Frames of the graph and the gauge on a shown window, 440 high, at scales 1 and 2: rendering one
// reading, repainting the window. Beside them the floors: the toolkit's own repaint of a strip of
// 12 columns, and two copies of the graph's size and two lines. 600 points make a sweep of 30 s;
// 960 sweeps are eight hours.
//   QT_QPA_PLATFORM=offscreen build/default/bin/graph_bench
//     --benchmark_filter='floor|Frame'   every frame of the running trace
//     --benchmark_filter=afterChange     from a change of scale to the exact picture
//     --benchmark_filter=afterAnHour     from an hour without a frame to the exact picture
// The times are of single frames: median, 99th percentile and longest, in milliseconds of processor
// time.

#include "feedback/GaugeView.h"
#include "feedback/GraphView.h"
#include "toolkit/DesignFrame.h"
#include "toolkit/ImageView.h"

#include <QApplication>
#include <QPainter>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cmath>
#include <ctime>
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

void repaint()
{
    QCoreApplication::sendPostedEvents();
}

void show(QWidget& window)
{
    window.show();
    QCoreApplication::processEvents();
}

struct Trace {
    RealClock clock;
    QWidget parent;
    ImageView maxImage {&parent};
    ImageView targetImage {&parent};
    GraphView graph {&parent};
    float (*pressure)(int);
    int points = 0;

    Trace(float (*thePressure)(int), int sweeps, int scale)
        : pressure(thePressure)
    {
        setDesignFrame(graph, QRectF(QPointF(0.0, 0.0), designSize));
        parent.resize(designSize * scale);
        graph.resize(designSize * scale);
        graph.setUp(maxImage, targetImage);
        graph.targetPressure.setValue(30.0f);
        graph.targetColor.setValue(Qt::red);
        add(sweeps * pointsPerSweep);
        show(parent);
        showFrame();
    }

    void showFrame()
    {
        graph.renderFrame();
        repaint();
    }

    void add(int count)
    {
        for (int const end = points + count; points < end; ++points)
            graph.plotter()->addPressurePoint(pressure(points));
    }
};

// What the frames of one run took.
class FrameTimes {
public:
    explicit FrameTimes(benchmark::State& state)
        : m_state(state)
    {
    }
    FrameTimes(FrameTimes const&) = delete;
    FrameTimes& operator=(FrameTimes const&) = delete;
    ~FrameTimes()
    {
        std::ranges::sort(m_milliseconds);
        auto const count = m_milliseconds.size();
        m_state.counters["median"] = m_milliseconds[count / 2];
        m_state.counters["p99"] = m_milliseconds[count * 99 / 100];
        m_state.counters["longest"] = m_milliseconds.back();
    }

    // In processor time, so that other programs do not count.
    template<typename Work>
    double measure(Work work)
    {
        auto const begin = processorSeconds();
        work();
        auto const taken = processorSeconds() - begin;
        m_milliseconds.push_back(taken * 1e3);
        return taken;
    }

private:
    static double processorSeconds()
    {
        timespec time {};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
    }

    benchmark::State& m_state;
    std::vector<double> m_milliseconds;
};

void measureFrames(benchmark::State& state, float (*pressure)(int), int pointsPerFrame)
{
    Trace trace(pressure, static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
    FrameTimes times(state);
    for (auto const _ : state) {
        trace.add(pointsPerFrame);
        state.SetIterationTime(times.measure([&] { trace.showFrame(); }));
    }
}

// After each change, measures frames until the picture is exact.
void measureUntilExact(benchmark::State& state, Trace& trace, auto change)
{
    trace.graph.setClock(trace.clock);
    FrameTimes times(state);
    int frames = 0;
    for (auto const _ : state) {
        change();
        double total = 0.0;
        do {
            trace.add(1);
            total += times.measure([&] { trace.showFrame(); });
            ++frames;
        } while (!trace.graph.isSettled());
        state.SetIterationTime(total);
    }
    state.counters["frames"]
        = benchmark::Counter(static_cast<double>(frames), benchmark::Counter::kAvgIterations);
}

void afterChange(benchmark::State& state, float (*pressure)(int))
{
    Trace trace(pressure, static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
    measureUntilExact(state, trace, [&, upperBound = 80.0f]() mutable {
        upperBound = 165.0f - upperBound;
        trace.graph.upperBoundPressure.setValue(upperBound);
        trace.graph.plotter()->setUpperBoundPressure(upperBound);
    });
}

void afterAnHour(benchmark::State& state, float (*pressure)(int))
{
    Trace trace(pressure, 1, static_cast<int>(state.range(0)));
    measureUntilExact(state, trace, [&] { trace.add(120 * pointsPerSweep); });
}

void gaugeFrame(benchmark::State& state)
{
    QWidget window;
    GaugeView gauge(&window);
    auto const scale = static_cast<int>(state.range(0));
    setDesignFrame(gauge, QRectF(0.0, 0.0, 64.0, 440.0));
    gauge.resize(QSize(64, 440) * scale);
    window.resize(gauge.size());
    gauge.upperBoundPressure.setValue(80.0f);
    gauge.targetPressure.setValue(30.0f);
    gauge.maxPressure.setValue(40.0f);
    show(window);
    FrameTimes times(state);
    int points = 0;
    for (auto const _ : state) {
        gauge.currentPressure.setValue(pressing(points++));
        state.SetIterationTime(times.measure([&] {
            gauge.renderFrame();
            repaint();
        }));
    }
}

void floorOfOneRepaint(benchmark::State& state)
{
    class Strip : public QWidget {
    public:
        using QWidget::QWidget;

    protected:
        void paintEvent(QPaintEvent*) override { QPainter(this).drawImage(rect(), m_picture); }

    private:
        QImage m_picture {12, 440, QImage::Format_RGB32};
    };
    QWidget window;
    window.resize(designSize);
    Strip strip(&window);
    strip.setAttribute(Qt::WA_OpaquePaintEvent);
    strip.resize(12, 440);
    show(window);
    FrameTimes times(state);
    for (auto const _ : state) {
        state.SetIterationTime(times.measure([&] {
            strip.update();
            repaint();
        }));
    }
}

void floorOfTwoCopies(benchmark::State& state)
{
    auto const size = designSize * static_cast<int>(state.range(0));
    QImage background(size, QImage::Format_RGB32);
    background.fill(Qt::darkBlue);
    QImage sweeps(size, QImage::Format_ARGB32_Premultiplied);
    sweeps.fill(Qt::transparent);
    QImage frame(size, QImage::Format_RGB32);
    FrameTimes times(state);
    for (auto const _ : state) {
        state.SetIterationTime(times.measure([&] {
            QPainter painter(&frame);
            painter.drawImage(0, 0, background);
            painter.setPen(QPen(Qt::red, 4.0));
            painter.drawLine(0, 100, size.width(), 100);
            painter.drawLine(0, 200, size.width(), 200);
            painter.drawImage(0, 0, sweeps);
            benchmark::DoNotOptimize(frame.constBits());
        }));
    }
}

void atFixedLength(benchmark::internal::Benchmark* bench)
{
    // Two sweeps' worth of frames, so that the number of sweeps stays what it says.
    bench->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(2 * pointsPerSweep);
}

BENCHMARK(floorOfOneRepaint)->Apply(atFixedLength);
BENCHMARK(floorOfTwoCopies)->Apply(atFixedLength)->Arg(1)->Arg(2);
BENCHMARK_CAPTURE(measureFrames, pressing, pressing, 1)
    ->Name("pressingFrame")
    ->Apply(atFixedLength)
    ->ArgsProduct({{1, 10, 100, 960}, {1, 2}});
BENCHMARK_CAPTURE(measureFrames, noise, noise, 1)
    ->Name("noiseFrame")
    ->Apply(atFixedLength)
    ->ArgsProduct({{1, 10}, {1, 2}});
// 320 records a second, 60 frames.
BENCHMARK_CAPTURE(measureFrames, lineRate, pressing, 6)
    ->Name("lineRateFrame")
    ->Apply(atFixedLength)
    ->ArgsProduct({{1, 960}, {1, 2}});
BENCHMARK(gaugeFrame)->Apply(atFixedLength)->Arg(1)->Arg(2);
BENCHMARK_CAPTURE(afterChange, pressing, pressing)
    ->Apply(atFixedLength)
    ->Iterations(2)
    ->ArgsProduct({{1, 10, 100, 960}, {1, 2}});
BENCHMARK_CAPTURE(afterAnHour, pressing, pressing)->Apply(atFixedLength)->Iterations(1)->Arg(2);
BENCHMARK_CAPTURE(afterAnHour, noise, noise)->Apply(atFixedLength)->Iterations(1)->Arg(2);
BENCHMARK_CAPTURE(afterChange, noise, noise)
    ->Apply(atFixedLength)
    ->Iterations(2)
    ->ArgsProduct({{1, 10}, {1, 2}});

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
