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
    // Paints onto a surface of that size in device pixels; toDevice maps the plotter's design units
    // onto it. Whether this is what stroking every sweep gives; if not, the next frames come to it.
    bool draw(QPainter& painter, Plotter const& plotter, QSize size, QTransform const& toDevice,
        TimeSlice const& slice);

private:
    void follow(Plotter const& plotter, QSize size, QTransform const& toDevice);
    bool catchUp(Plotter const& plotter, TimeSlice const& slice);

    SweepLayer m_shown;
    // While every stroke is made anew: the new picture, and the one before the change.
    std::optional<SweepLayer> m_rebuilt;
    SweepLayer m_beforeChange;
    std::optional<std::uint64_t> m_resets;
};

} // namespace tensio
