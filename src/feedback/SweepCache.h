#pragma once

#include <QImage>
#include <QRegion>
#include <QTransform>

#include <utility>

namespace tensio {

class FrameBudget;
class Plotter;

// The picture of all sweeps at one scale on one surface: pixel for pixel that of stroking every
// sweep whole. Columns that no later point can touch are stroked once; the rest of the running
// sweep, its tail, is taken back and stroked again whenever points are added.
class SweepCache {
public:
    // Fits nothing.
    SweepCache() = default;
    // Empty, for the plotter's present scales and a surface of that size in device pixels; toDevice
    // maps the plotter's design units onto it.
    SweepCache(Plotter const& plotter, QSize size, QTransform const& toDevice);

    bool fits(Plotter const& plotter, QSize size, QTransform const& toDevice) const;
    // This picture, resized to other scales or another surface.
    SweepCache stretched(Plotter const& plotter, QSize size, QTransform const& toDevice) const;

    // Strokes what is new, at least one strip. Returns false if the budget ended first.
    bool catchUp(Plotter const& plotter, FrameBudget const& budget);
    // Strokes the newest points at once and skips those before. The picture is no longer exact.
    void skipToNewest(Plotter const& plotter);

    QImage const& picture() const { return m_picture; }
    // Where the picture differs from that at the last call.
    QRegion takeChanged() { return std::exchange(m_changed, {}); }

private:
    bool strokeUpTo(Plotter const& plotter, int endColumn, FrameBudget const& budget);
    void strokeTail(Plotter const& plotter);
    void removeTail();
    void stroke(Plotter const& plotter, int endColumn);
    QRect inkArea(Plotter const& plotter, int fromColumn, int endColumn) const;
    int firstLiveColumn(Plotter const& plotter) const;
    int endOfInk(Plotter const& plotter) const;
    void beginSweep(std::size_t sweep);

    QTransform m_toUnits;
    QTransform m_toDevice;
    QImage m_picture;
    QRegion m_changed;
    std::size_t m_sweep = 0;
    // Columns before this one are finished.
    int m_column = 0;
    // The pixels that the tail covers, as they were without it.
    QImage m_underTail;
    QRect m_tail;
};

} // namespace tensio
