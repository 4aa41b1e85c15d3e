// tensio's graph, the copy of its pixels, and QCustomPlot.

#include "Frames.h"
#include "feedback/GraphView.h"
#include "toolkit/DesignFrame.h"
#include "toolkit/ImageView.h"

#include <QPainter>
#include <qcustomplot.h>

using namespace peers;

namespace {

class StillClock : public tensio::Scheduler {
public:
    tensio::Seconds now() const override { return {}; }
    tensio::Subscription scheduleAfter(tensio::Seconds, std::function<void()>) override
    {
        return {};
    }
};

class Copy : public QWidget {
    void paintEvent(QPaintEvent*) override { QPainter(this).drawImage(0, 0, m_image); }

    QImage m_image {widgetSize, QImage::Format_ARGB32_Premultiplied};
};

void timeCopy()
{
    Copy copy;
    show(copy);
    timeFrames("copy of all pixels", [&](int) { copy.update(); });
}

void timeOurs(int sweeps)
{
    StillClock clock;
    QWidget window;
    tensio::ImageView maxImage {&window};
    tensio::ImageView targetImage {&window};
    tensio::GraphView graph {&window};
    tensio::setDesignFrame(graph, QRectF(QPointF(0.0, 0.0), widgetSize));
    graph.resize(widgetSize);
    graph.setUp(maxImage, targetImage);
    int points = 0;
    auto const add = [&](int) {
        graph.plotter()->addPressurePoint(static_cast<float>(pressing(points++)));
        graph.renderFrame();
    };
    while (points < sweeps * pointsPerSweep)
        add(points);
    show(window);
    timeFrames(sweeps == 1 ? "tensio" : "tensio, 100 sweeps", add);
}

// The running sweep has a layer of its own, the only one that is drawn again.
void timeQCustomPlot(bool isAntialiased)
{
    QCustomPlot plot;
    plot.xAxis->setRange(0.0, secondsPerSweep);
    plot.yAxis->setRange(0.0, highestPressure);
    plot.addLayer(QStringLiteral("running"));
    auto* const running = plot.layer(QStringLiteral("running"));
    running->setMode(QCPLayer::lmBuffered);
    if (!isAntialiased) {
        plot.setNotAntialiasedElements(QCP::aeAll);
        plot.setPlottingHint(QCP::phFastPolylines);
    }
    for (bool const isRunning : {false, true}) {
        auto* const graph = plot.addGraph();
        graph->setPen(QPen(Qt::blue, lineWidth, Qt::SolidLine, Qt::FlatCap, Qt::BevelJoin));
        graph->setAntialiased(isAntialiased);
        graph->setAdaptiveSampling(false);
        if (isRunning)
            graph->setLayer(running);
        for (int index = 0; !isRunning && index < pointsPerSweep; ++index)
            graph->addData(index * secondsBetweenPoints, pressing(index));
    }
    show(plot);
    plot.replot();
    timeFrames(isAntialiased ? "QCustomPlot, layers" : "QCustomPlot, layers, aliased fast lines",
        [&](int index) {
            auto const pressure = pressing(pointsPerSweep + index);
            plot.graph(1)->addData(index * secondsBetweenPoints, pressure);
            running->replot();
        });
}

} // namespace

int main(int argc, char** argv)
{
    QApplication const application(argc, argv);
    timeCopy();
    timeOurs(1);
    timeOurs(100);
    timeQCustomPlot(true);
    timeQCustomPlot(false);
}
