#pragma once

#include "feedback/SweepLayer.h"

#include <cstdint>
#include <optional>

namespace tensio {

// All sweeps, with the newest pressure in every frame. When the scales or the surface change, every
// stroke has to be made anew, which can take seconds after hours: that is spread over the frames
// that follow. Until it is done, the old picture is shown drawn out, new pressures over it.
class SweepPicture {
public:
    // Comes up to the plotter, for a surface of that size in device pixels; toDevice maps the
    // plotter's design units onto it. Whether the picture is now what stroking every sweep gives;
    // if not, the next frames come to it.
    bool update(
        Plotter const& plotter, QSize size, QTransform const& toDevice, TimeSlice const& slice);
    // What the latest update can have changed.
    QRect changed() const { return m_changed; }
    void draw(QPainter& painter, Plotter const& plotter) const { m_shown.draw(painter, plotter); }

private:
    // Whether what is shown is another layer now.
    bool follow(Plotter const& plotter, QSize size, QTransform const& toDevice);

    SweepLayer m_shown;
    QRect m_changed;
    // While every stroke is made anew: the new picture, and the one before the change.
    std::optional<SweepLayer> m_rebuilt;
    SweepLayer m_beforeChange;
    std::optional<std::uint64_t> m_resets;
};

} // namespace tensio
