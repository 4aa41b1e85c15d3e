#include "feedback/GraphView.h"

#include "feedback/GaugeView.h"
#include "toolkit/DesignFrame.h"
#include "toolkit/ImageView.h"

#include <QApplication>
#include <QPainter>
#include <QScreen>

#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>

using namespace tensio;

namespace {

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
        setDesignFrame(view, QRectF(164.0, 64.0, 524.0, 440.0));
        view.setUp(maxImage, targetImage);
    }

    // What the repaints have left in the window.
    QImage onScreen()
    {
        view.renderFrame();
        QCoreApplication::processEvents();
        auto const window = parent.screen()->grabWindow(parent.winId());
        return window.copy(view.geometry()).toImage().convertToFormat(QImage::Format_RGB32);
    }

    QImage frame(QSize size = {524, 440})
    {
        view.resize(size);
        view.renderFrame();
        return view.grab().toImage().convertToFormat(QImage::Format_RGB32);
    }
};

constexpr QSizeF designSize(524.0, 440.0);

QColor sweepColor(std::size_t sweep)
{
    constexpr std::array<QRgb, 6> colors {
        0xffffff, 0xffff00, 0x00ff00, 0x00ffff, 0xff8000, 0xff00ff};
    return QColor(colors[sweep % colors.size()]);
}

// What the layered drawing must look like: every sweep stroked whole, one over the other, on a
// transparent sheet.
QImage restroke(Plotter const& plotter, QImage const& backdrop)
{
    QImage sweeps(backdrop.size(), QImage::Format_ARGB32_Premultiplied);
    sweeps.fill(Qt::transparent);
    auto const toDevice = designToSurface(designSize, backdrop.size());
    {
        QPainter painter(&sweeps);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setTransform(toDevice);
        for (std::size_t index = 0; index < plotter.paths().size(); ++index) {
            QPolygonF line {QPointF(0.0, 0.0)};
            for (std::size_t point = 0; point < plotter.paths()[index].count; ++point)
                line << plotter.point(plotter.paths()[index], point);
            painter.setPen(QPen(sweepColor(index), 5.0, Qt::SolidLine, Qt::FlatCap, Qt::BevelJoin));
            if (line.size() > 1)
                painter.drawPolyline(line);
        }
    }
    auto picture = backdrop;
    QPainter painter(&picture);
    painter.setClipRect(wholePixels(
        toDevice.mapRect(QRectF(2.0, 2.0, designSize.width() - 4.0, designSize.height() - 4.0))));
    painter.drawImage(0, 0, sweeps);
    painter.end();
    return picture;
}

// The scales and the surface after it.
struct Change {
    float upperBound = 80.0f;
    std::int64_t timeWindow = 30;
    QSize size {524, 440};
};

// Whether the last piece of the trace has its sweep's colour.
bool showsNewestPressure(QImage const& frame, Plotter const& plotter)
{
    auto const path = plotter.paths().back();
    if (path.count < 2)
        return true;
    auto const middle
        = (plotter.point(path, path.count - 2) + plotter.point(path, path.count - 1)) / 2.0;
    auto const place = designToSurface(designSize, frame.size()).map(middle);
    return frame.pixelColor(static_cast<int>(place.x()), static_cast<int>(place.y()))
        == sweepColor(plotter.paths().size() - 1);
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

struct Trace {
    std::string name;
    float (*pressure)(int);
    int points;
    double scale;
    std::int64_t laterWindow;
};

} // namespace

TEST(GraphView, LayersLookExactlyLikeStrokingEverySweepEachTime)
{
    std::vector<Trace> const traces {{"smooth", smooth, 450, 1.0, 0}, {"noisy", noisy, 150, 1.0, 0},
        {"wrapped", smooth, 1700, 1.5, 0}, {"just wrapped", smooth, 603, 1.0, 0},
        {"noisy, wrapped", noisy, 700, 1.0, 0},
        {"rescaled in the middle of a sweep", smooth, 900, 1.0, 60},
        {"shrunk past the edge", noisy, 500, 1.0, 10}, {"odd scale", smooth, 700, 0.73, 45}};
    for (auto const& trace : traces) {
        Graph graph;
        auto const size = (designSize * trace.scale).toSize();
        auto& plotter = *graph.view.plotter();
        graph.view.targetPressure.setValue(20.0f);
        graph.parent.resize(1000, 800);
        graph.parent.show();
        graph.view.resize(size);
        for (int index = 0; index < trace.points; ++index) {
            plotter.addPressurePoint(trace.pressure(index));
            graph.view.maxPressure.setValue(static_cast<float>(40 + index / 50));
            graph.view.targetColor.setValue(index / 20 % 2 == 0 ? Qt::red : Qt::white);
            // Uneven frames, so that strips end in the middle of what a frame adds.
            if (index % 7 == 0 || index % 11 == 0)
                graph.onScreen();
            if (trace.laterWindow != 0 && index == trace.points * 2 / 3)
                plotter.setTimeWindow(trace.laterWindow);
        }
        auto const layered = graph.frame(size);
        EXPECT_EQ(graph.onScreen(), layered) << trace.name << ": everything new was repainted";
        Graph empty;
        empty.view.targetPressure.setValue(20.0f);
        empty.view.maxPressure.setValue(graph.view.maxPressure.value());
        empty.view.targetColor.setValue(graph.view.targetColor.value());
        auto const backdrop = empty.frame(size);
        EXPECT_EQ(layered, restroke(plotter, backdrop)) << trace.name;
        EXPECT_NE(layered, backdrop) << trace.name;
    }
}

TEST(GraphView, SpreadsChangesOverFramesWithTheNewestPressureInEachAndEndsExact)
{
    struct Row {
        std::string name;
        std::vector<Change> changes;
    };
    std::vector<Row> const rows {{"higher scale", {{100.0f}}}, {"lower scale", {{40.0f}}},
        {"longer", {{80.0f, 60}}}, {"shorter", {{80.0f, 10}}},
        {"larger", {{80.0f, 30, {786, 660}}}}, {"none, after a pause", {}},
        {"one change after the other", {{100.0f}, {100.0f, 30, {262, 220}}, {90.0f, 45}}},
        {"there and back", {{100.0f}, {80.0f}}}};
    for (auto const& row : rows) {
        Graph graph;
        SteppingClock clock;
        auto& plotter = *graph.view.plotter();
        for (int index = 0; index < 1300; ++index)
            plotter.addPressurePoint(smooth(index));
        graph.frame();
        graph.view.setClock(clock);
        QImage frame;
        int frames = 0;
        auto const showFrame = [&](QSize size) {
            plotter.addPressurePoint(smooth(1300 + frames++));
            clock.looks = 0;
            frame = graph.frame(size);
            EXPECT_LE(clock.looks, 12) << row.name;
            EXPECT_TRUE(showsNewestPressure(frame, plotter)) << row.name << ", frame " << frames;
        };
        for (auto const& change : row.changes) {
            plotter.setUpperBoundPressure(change.upperBound);
            plotter.setTimeWindow(change.timeWindow);
            for (int count = 0; count < 3; ++count) {
                showFrame(change.size);
                EXPECT_FALSE(graph.view.isSettled()) << row.name;
            }
        }
        if (row.changes.empty()) {
            for (int index = 0; index < 3000; ++index)
                plotter.addPressurePoint(smooth(index));
        }
        auto const size = row.changes.empty() ? Change().size : row.changes.back().size;
        do {
            showFrame(size);
        } while (!graph.view.isSettled() && frames < 500);

        Graph empty;
        auto const backdrop = empty.frame(frame.size());
        EXPECT_EQ(frame, restroke(plotter, backdrop)) << row.name;
        if (row.name == "there and back") {
            plotter.setUpperBoundPressure(40.0f);
            showFrame(frame.size());
            plotter.reset();
            EXPECT_EQ(graph.frame(), backdrop) << "a reset in the middle of a change";
        }
    }
}

TEST(GraphView, DrawsGridAndLinesWhereTheyBelong)
{
    Graph graph;
    graph.view.targetPressure.setValue(40.0f);
    graph.view.targetColor.setValue(QColor(0xe60012));
    graph.view.maxPressure.setValue(60.0f);
    auto const picture = graph.frame();
    // Rows count from the top; the middle of the view is 40 of 80 kPa.
    EXPECT_EQ(picture.pixelColor(100, 219), QColor(0xe60012));
    EXPECT_EQ(picture.pixelColor(100, 109), QColor(0x4dd736));
    EXPECT_EQ(picture.pixelColor(1, 200), QColor(Qt::black));
    EXPECT_EQ(picture.pixelColor(95, 100), QColor(0x001c58));
    int verticalLines = 0;
    for (int x = 3; x < 521; ++x)
        verticalLines
            += picture.pixelColor(x, 100).red() > 10 && picture.pixelColor(x - 1, 100).red() <= 10
            ? 1
            : 0;
    int horizontalLines = 0;
    for (int y = 3; y < 437; ++y)
        horizontalLines
            += picture.pixelColor(95, y).red() > 10 && picture.pixelColor(95, y - 1).red() <= 10;
    EXPECT_EQ(horizontalLines, 15) << "one every 5 kPa; target and maximum lie on two of them";
    EXPECT_EQ(verticalLines, 29)
        << "30 s have 31 lines, of which the first and the last lie under the border";
}

TEST(GraphView, HidesALineOnTheBorderAtEveryScaleWhileItsMarkerGoesThere)
{
    Graph graph;
    auto const nan = std::numeric_limits<float>::quiet_NaN();
    auto const infinity = std::numeric_limits<float>::infinity();
    auto const plain = [&](float pressure, QSize size) {
        graph.view.maxPressure.setValue(pressure);
        return graph.frame(size);
    };
    for (double const scale : {0.75, 1.0, 1.25, 1.5}) {
        auto const size = (designSize * scale).toSize();
        auto const nowhere = plain(-80.0f, size);
        for (float const pressure : {0.0f, 80.0f, infinity, nan})
            EXPECT_EQ(plain(pressure, size), nowhere) << pressure << " at " << scale;
    }
    graph.view.plotter()->addPressurePoint(1.0f);
    graph.view.plotter()->addPressurePoint(nan);
    graph.view.targetPressure.setValue(20.0f);
    graph.view.maxPressure.setValue(800.0f);
    graph.frame();
    // The container begins half a marker below the graph, so that the marker's middle is level.
    EXPECT_EQ(designFrame(graph.targetImage).center().y(), 462.0 - 110.0 - 11.0);
    EXPECT_EQ(designFrame(graph.maxImage).center().y(), 462.0 - 4400.0 - 11.0);
    graph.view.maxPressure.setValue(infinity);
    graph.frame();
    EXPECT_LT(designFrame(graph.maxImage).bottom(), 0.0);
}

TEST(GaugeView, FillsTheColumnInProportionAndSurvivesEveryReading)
{
    GaugeView gauge;
    setDesignFrame(gauge, QRectF(0.0, 0.0, 64.0, 404.0));
    gauge.grab(); // No scale yet.
    gauge.upperBoundPressure.setValue(80.0f);
    gauge.currentPressure.setValue(40.0f);
    auto const picture = [&] {
        gauge.renderFrame();
        return gauge.grab().toImage();
    };
    auto const half = picture();
    EXPECT_EQ(half.pixelColor(30, 210), QColor(0x009cff));
    EXPECT_EQ(half.pixelColor(30, 195), QColor(0x434343));
    for (float const reading : {std::numeric_limits<float>::infinity(), 1e30f, 80.0f}) {
        gauge.currentPressure.setValue(reading);
        EXPECT_EQ(picture().pixelColor(30, 10), QColor(0x009cff));
    }
}
