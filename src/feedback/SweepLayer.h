#pragma once

#include <QImage>
#include <QTransform>

class QPainter;

namespace tensio {

class Plotter;
class TimeSlice;

// The picture of all sweeps at one scale on one surface, kept so that a frame costs the same after
// eight hours as after one minute. Columns that no later point can touch are stroked once, into a
// transparent image, in strips; a frame strokes only the end of the running sweep. The result is,
// pixel for pixel, that of stroking every sweep whole each time.
class SweepLayer {
public:
    // Fits nothing.
    SweepLayer() = default;
    // Empty, for the plotter's present scales and a surface of that size in device pixels; toDevice
    // maps the plotter's design units onto it.
    SweepLayer(Plotter const& plotter, QSize size, QTransform const& toDevice);

    bool fits(Plotter const& plotter, QSize size, QTransform const& toDevice) const;
    // What has been kept, drawn out to other scales or another surface.
    SweepLayer stretched(Plotter const& plotter, QSize size, QTransform const& toDevice) const;

    // Strokes what can be kept and is not yet, at least one strip. Whether that is all; otherwise
    // the time was over.
    bool catchUp(Plotter const& plotter, TimeSlice const& slice);
    void draw(QPainter& painter, Plotter const& plotter) const;

    std::size_t sweep() const { return m_sweep; }
    // Left of the first column the picture stays as it is while the sweep runs; right of the last
    // one the sweep has not come yet.
    int firstLiveColumn() const { return m_column; }
    int endOfLiveColumns(Plotter const& plotter) const;

private:
    void drawFinished(QPainter& painter, int fromColumn, int endColumn) const;
    bool commitUpTo(
        Plotter const& plotter, int endColumn, int stripColumns, TimeSlice const& slice);
    void stroke(QImage& image, int imageColumn, Plotter const& plotter, int fromColumn,
        int endColumn) const;
    int lastFinishedColumn(Plotter const& plotter) const;

    QTransform m_toUnits;
    QTransform m_toDevice;
    QImage m_finished;
    std::size_t m_sweep = 0;
    int m_column = 0;
};

} // namespace tensio
