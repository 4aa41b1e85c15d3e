// One frame of the graph, 524 × 440 at scale 1, beside the floor: two copies of the same size and
// two lines. QT_QPA_PLATFORM=offscreen build/default/bin/graph_bench

#include "feedback/GraphView.h"
#include "toolkit/DesignFrame.h"
#include "toolkit/ImageView.h"
#include "toolkit/Resources.h"

#include <QApplication>
#include <QPainter>

#include <benchmark/benchmark.h>
#include <cmath>
#include <random>

using namespace tensio;

namespace {

constexpr QSize size(524, 440);

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

void measureFrames(benchmark::State& state, float (*pressure)(int))
{
    QWidget parent;
    ImageView maxImage(&parent);
    ImageView targetImage(&parent);
    GraphView graph(&parent);
    setDesignFrame(graph, QRectF(QPointF(0.0, 0.0), size));
    graph.setUp(maxImage, targetImage);
    graph.targetPressure.setValue(30.0f);
    graph.targetColor.setValue(Qt::red);
    int index = 0;
    for (; index < state.range(0) * 600; ++index)
        graph.plotter()->addPressurePoint(pressure(index));
    graph.frame(size);
    for (auto const _ : state) {
        graph.plotter()->addPressurePoint(pressure(index++));
        benchmark::DoNotOptimize(graph.frame(size).constBits());
    }
}

void pressingFrame(benchmark::State& state)
{
    measureFrames(state, pressing);
}

void noiseFrame(benchmark::State& state)
{
    measureFrames(state, noise);
}

void floorOfTwoCopies(benchmark::State& state)
{
    QImage background(size, QImage::Format_RGB32);
    background.fill(Qt::darkBlue);
    QImage sweeps(size, QImage::Format_ARGB32_Premultiplied);
    sweeps.fill(Qt::transparent);
    QImage frame(size, QImage::Format_RGB32);
    for (auto const _ : state) {
        QPainter painter(&frame);
        painter.drawImage(0, 0, background);
        painter.setPen(QPen(Qt::red, 4.0));
        painter.drawLine(0, 100, size.width(), 100);
        painter.drawLine(0, 200, size.width(), 200);
        painter.drawImage(0, 0, sweeps);
        benchmark::DoNotOptimize(frame.constBits());
    }
}

BENCHMARK(floorOfTwoCopies)->Unit(benchmark::kMillisecond);
BENCHMARK(pressingFrame)->Arg(1)->Arg(100)->Unit(benchmark::kMillisecond);
BENCHMARK(noiseFrame)->Arg(1)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    loadResources();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
