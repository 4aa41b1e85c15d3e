#pragma once

#include <QImage>
#include <QTransform>

#include <functional>

namespace tensio {

class Plotter;

// How sweeps lie on a surface.
struct SweepScale {
    // Of the surface, in device pixels.
    QSize size;
    // Plotter::toUnits; from there onto the surface.
    QTransform toUnits;
    QTransform toDevice;

    bool operator==(SweepScale const&) const = default;
};

// The picture of all sweeps at one scale on one surface: pixel for pixel that of stroking every
// sweep whole. New points change only the pixels around them: these are taken back to what they
// were before the running sweep, and its end is stroked there again.
class SweepCache {
public:
    SweepCache() = default;
    explicit SweepCache(SweepScale const& scale);

    SweepScale const& scale() const { return m_scale; }
    // This picture, resized to another scale.
    SweepCache stretched(SweepScale const& scale) const;

    // Strokes what is new, at least one strip. Returns false if the time was over first.
    bool catchUp(Plotter const& plotter, std::function<bool()> const& isTimeOver);
    // Strokes the newest points at once and skips those before. The picture is no longer exact.
    void skipToNewest(Plotter const& plotter);

    QImage const& picture() const { return m_picture; }
    // What the latest catchUp or skipToNewest has stroked.
    QRect changed() const { return m_changed; }

private:
    std::size_t pointsPerStrip() const;
    bool strokeNew(Plotter const& plotter);
    bool strokeFinished(Plotter const& plotter);
    void stroke(Plotter const& plotter, std::size_t end, QRect area);
    void beginSweep(std::size_t sweep);

    SweepScale m_scale;
    QImage m_picture;
    QRect m_changed;
    std::size_t m_sweep = 0;
    // How many of its points are in the picture; 0 while a finished sweep is stroked by columns.
    std::size_t m_points = 0;
    // From this column on, the picture is without that sweep.
    int m_column = 0;
    // The picture without that sweep, in the columns that its next points change.
    QImage m_below;
};

} // namespace tensio
