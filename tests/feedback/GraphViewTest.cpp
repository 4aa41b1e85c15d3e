#include "feedback/GraphView.h"

#include "support/Ui.h"
#include "toolkit/DesignFrame.h"
#include "toolkit/ImageView.h"

#include <QApplication>
#include <QPainter>
#include <QScreen>
#include <QSignalSpy>

#include <cmath>
#include <gtest/gtest.h>
#include <random>

using namespace tensio;

namespace {

constexpr QSize usualSize(524, 440);

struct Graph {
    QWidget parent;
    QWidget markers {&parent};
    ImageView maxImage {&markers};
    ImageView targetImage {&markers};
    GraphView view {&parent};

    Graph()
    {
        setDesignFrame(markers, QRectF(692.0, 53.0, 56.0, 462.0));
        for (auto* image : {&maxImage, &targetImage})
            setDesignFrame(*image, QRectF(0.0, 440.0, 51.0, 22.0));
        setDesignFrame(view, QRectF(QPointF(4.0, 4.0), usualSize));
        view.setUp(maxImage, targetImage);
        parent.resize(1000, 900);
        parent.show();
    }

    Plotter& plotter() { return *view.plotter(); }

    // What the repaints have left in the window, in device pixels.
    QImage onScreen(QSize size)
    {
        view.resize(size);
        view.renderFrame();
        QCoreApplication::processEvents();
        auto window = parent.screen()->grabWindow(parent.winId()).toImage();
        auto const ratio = window.devicePixelRatio();
        QRectF const area(QPointF(view.pos()) * ratio, QSizeF(view.size()) * ratio);
        window.setDevicePixelRatio(1.0);
        return window.copy(area.toRect()).convertToFormat(QImage::Format_RGB32);
    }
};

QColor sweepColor(std::size_t sweep)
{
    constexpr std::array<QRgb, 6> colors {
        0xffffff, 0xffff00, 0x00ff00, 0x00ffff, 0xff8000, 0xff00ff};
    return colors[sweep % colors.size()];
}

// What the layered drawing must look like: every sweep stroked whole, one over the other, on a
// transparent sheet.
QImage restroke(Graph& graph, QSize size)
{
    Graph empty;
    empty.view.targetPressure.setValue(graph.view.targetPressure.value());
    empty.view.maxPressure.setValue(graph.view.maxPressure.value());
    empty.view.targetColor.setValue(graph.view.targetColor.value());
    auto picture = empty.onScreen(size);
    QImage sweeps(picture.size(), QImage::Format_ARGB32_Premultiplied);
    sweeps.fill(Qt::transparent);
    QPainter pen(&sweeps);
    pen.setRenderHint(QPainter::Antialiasing);
    pen.setTransform(designToSurface(usualSize, picture.size()));
    std::size_t sweep = 0;
    for (auto const& path : graph.plotter().paths()) {
        QPolygonF line {QPointF(0.0, 0.0)};
        for (std::size_t point = 0; point < path.count; ++point)
            line << graph.plotter().point(path, point);
        pen.setPen(QPen(sweepColor(sweep++), 5.0, Qt::SolidLine, Qt::FlatCap, Qt::BevelJoin));
        if (path.count > 0)
            pen.drawPolyline(line);
    }
    QPainter painter(&picture);
    QRectF const field(2.0, 2.0, usualSize.width() - 4.0, usualSize.height() - 4.0);
    painter.setClipRect(wholePixels(pen.transform().mapRect(field)));
    painter.drawImage(0, 0, sweeps);
    return picture;
}

// Moves on by a millisecond whenever it is looked at, and counts how often that was.
class SteppingClock : public Scheduler {
public:
    mutable int looks = 0;

    Seconds now() const override { return Seconds(++looks * 0.001); }
    Subscription scheduleAfter(Seconds, std::function<void()>) override { return {}; }
};

float smooth(int index)
{
    return 35.0f + 30.0f * std::sin(static_cast<float>(index) * 0.07f);
}

float noisy(int)
{
    static std::mt19937 random(3);
    return std::uniform_real_distribution(0.0f, 80.0f)(random);
}

} // namespace

TEST(GraphView, SpreadsChangesOverFramesAndLooksExactlyLikeStrokingEverySweepEachTime)
{
    using Row = std::tuple<float (*)(int), int, QSize, std::int64_t>;
    // Wrapped, just wrapped, rescaled in the middle of a sweep, shrunk past the edge, small. The
    // sizes are whole at 1.25, too.
    for (auto const& [pressure, points, size, laterWindow] : {Row {smooth, 1700, {784, 660}, 30},
             {smooth, 603, usualSize, 30}, {smooth, 900, usualSize, 60},
             {noisy, 500, usualSize, 10}, {noisy, 700, {380, 316}, 45}}) {
        Graph graph;
        SteppingClock clock;
        graph.view.setClock(clock);
        graph.view.targetPressure.setValue(20.0f);
        for (int index = 0; index < points; ++index) {
            graph.plotter().addPressurePoint(index % 97 == 96 ? NAN : pressure(index));
            int const whole = 40 + index / 50;
            graph.view.maxPressure.setValue(static_cast<float>(whole));
            graph.view.targetColor.setValue(index / 20 % 2 == 0 ? Qt::red : Qt::white);
            // Uneven frames, so that strips end in the middle of what a frame adds.
            if (index % 7 == 0 || index % 11 == 0) {
                clock.looks = 0;
                graph.onScreen(size);
                EXPECT_LE(clock.looks, 12);
            }
            if (index == points * 2 / 3)
                graph.plotter().setTimeWindow(laterWindow);
        }
        for (int frame = 0; frame < 500 && !graph.view.isSettled(); ++frame)
            graph.onScreen(size);
        graph.view.maxPressure.setValue(INFINITY);
        EXPECT_EQ(graph.onScreen(size), restroke(graph, size)) << points;
        EXPECT_LT(designFrame(graph.maxImage).bottom(), 0.0) << "out of sight";
        QSignalSpy const spread(&graph.view, &GraphView::needsFrame);
        graph.plotter().setUpperBoundPressure(60.0f);
        auto const changing = graph.onScreen(size);
        EXPECT_GT(spread.size(), 0) << points;
        graph.plotter().reset();
        auto const empty = graph.onScreen(size);
        EXPECT_EQ(empty, restroke(graph, size)) << "a reset in the middle of a change";
        EXPECT_GT(difference(changing, empty).width(), empty.width() / 2) << "the trace stays";
    }
}
