#pragma once

#include <QImage>
#include <QTransform>

#include <cstdint>

class QPainter;

namespace tensio {

class Plotter;

// The picture of all sweeps, kept so that a frame costs the same after eight hours as after one
// minute. Columns that no later point can touch are stroked once, into a transparent image, in
// strips; a frame strokes only the end of the running sweep. The result is, pixel for pixel, that
// of stroking every sweep whole each time.
class SweepLayer {
public:
    // Paints onto a surface of that size in device pixels; toDevice maps the plotter's design units
    // onto it.
    void draw(QPainter& painter, Plotter const& plotter, QSize size, QTransform const& toDevice);

private:
    void restartIfMoved(Plotter const& plotter, QSize size, QTransform const& toDevice);
    void commitFinishedColumns(Plotter const& plotter);
    void commitUpTo(Plotter const& plotter, int endColumn);
    void stroke(QImage& image, int imageColumn, Plotter const& plotter, int fromColumn,
        int endColumn) const;
    int lastFinishedColumn(Plotter const& plotter) const;

    QImage m_finished;
    QTransform m_toDevice;
    std::uint64_t m_revision = 0;
    std::size_t m_sweep = 0;
    int m_column = 0;
};

} // namespace tensio
