// Qwt, of which Debian has the build for Qt 5 only.

#include "Frames.h"

#include <qwt_plot.h>
#include <qwt_plot_canvas.h>
#include <qwt_plot_curve.h>
#include <qwt_plot_directpainter.h>

using namespace peers;

namespace {

struct Plot {
    QwtPlot plot;
    QwtPlotCurve curve;
    QVector<QPointF> points;

    Plot(int sweeps, bool isAntialiased)
    {
        plot.setAxisScale(QwtPlot::xBottom, 0.0, secondsPerSweep);
        plot.setAxisScale(QwtPlot::yLeft, 0.0, highestPressure);
        curve.setPen(QPen(Qt::blue, lineWidth, Qt::SolidLine, Qt::FlatCap, Qt::BevelJoin));
        curve.setRenderHint(QwtPlotItem::RenderAntialiased, isAntialiased);
        curve.attach(&plot);
        for (int index = 0; index < sweeps * pointsPerSweep; ++index)
            add(index % pointsPerSweep);
        show(plot);
        plot.replot();
    }

    void add(int index)
    {
        auto const pressure = pressing(static_cast<int>(points.size()));
        points.append(QPointF(index * secondsBetweenPoints, pressure));
        curve.setSamples(points);
    }
};

void timeReplot(char const* name, int sweeps, int frames)
{
    Plot plot(sweeps, true);
    timeFrames(
        name,
        [&](int index) {
            plot.add(index);
            plot.plot.replot();
        },
        frames);
}

void timeDirectPainter()
{
    Plot plot(1, false);
    QwtPlotDirectPainter painter;
    timeFrames("Qwt, direct painter, aliased, newest segment only", [&](int index) {
        plot.add(index);
        painter.drawSeries(&plot.curve, plot.points.size() - 2, plot.points.size() - 1);
    });
}

} // namespace

int main(int argc, char** argv)
{
    QApplication const application(argc, argv);
    timeReplot("Qwt, whole replot", 1, pointsPerSweep);
    timeReplot("Qwt, whole replot, 100 sweeps", 100, 20);
    timeDirectPainter();
}
