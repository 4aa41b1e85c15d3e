#pragma once

#include "feedback/SweepCache.h"

#include <cstdint>
#include <optional>

namespace tensio {

// Renders all sweeps, with the newest pressure in every frame. After a change of the scales or the
// surface, or after a long pause, stroking can take seconds: it is spread over the frames that
// follow. Until it is done, the picture is the old one, resized, with the newest pressures.
class SweepRenderer {
public:
    // Updates the picture for a surface of that size in device pixels; toDevice maps the plotter's
    // design units onto it. Returns true if the picture is exact; otherwise later calls finish it.
    bool update(Plotter const& plotter, QSize size, QTransform const& toDevice,
        std::function<bool()> const& isTimeOver);
    QImage const& picture() const { return m_preview ? m_preview->picture() : m_cache.picture(); }
    // What the latest update can have changed.
    QRegion const& changed() const { return m_changed; }

private:
    bool adoptScale(Plotter const& plotter, QSize size, QTransform const& toDevice);

    SweepCache m_cache;
    // Shown while the cache is behind.
    std::optional<SweepCache> m_preview;
    // What previews are made from: resizing a preview again would blur it more and more.
    std::optional<SweepCache> m_beforeChange;
    QRegion m_changed;
    std::optional<std::uint64_t> m_resets;
};

} // namespace tensio
