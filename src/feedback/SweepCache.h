#pragma once

#include <QImage>
#include <QRegion>
#include <QTransform>

#include <functional>
#include <utility>

namespace tensio {

class Plotter;

// The picture of all sweeps at one scale on one surface: pixel for pixel that of stroking every
// sweep whole. New points change only the pixels around them: these are taken back to what they
// were before the running sweep, and its end is stroked there again.
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

    // Strokes what is new, at least one strip. Returns false if the time was over first.
    bool catchUp(Plotter const& plotter, std::function<bool()> const& isTimeOver);
    // Strokes the newest points at once and skips those before. The picture is no longer exact.
    void skipToNewest(Plotter const& plotter);

    QImage const& picture() const { return m_picture; }
    // Where the picture differs from that at the last call.
    QRegion takeChanged() { return std::exchange(m_changed, {}); }

private:
    std::size_t pointsPerStrip() const;
    bool strokeNew(Plotter const& plotter);
    bool strokeFinished(Plotter const& plotter);
    void stroke(Plotter const& plotter, std::size_t end, QRect area);
    void beginSweep(std::size_t sweep);

    QTransform m_toUnits;
    QTransform m_toDevice;
    QImage m_picture;
    QRegion m_changed;
    std::size_t m_sweep = 0;
    // How many of its points are in the picture; 0 while a finished sweep is stroked by columns.
    std::size_t m_points = 0;
    // From this column on, the picture is without that sweep.
    int m_column = 0;
    // The picture without that sweep, in the columns that its next points change.
    QImage m_below;
};

} // namespace tensio
