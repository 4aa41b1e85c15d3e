#include "feedback/SweepRenderer.h"

#include "feedback/Plotter.h"

#include <utility>

namespace tensio {

bool SweepRenderer::update(Plotter const& plotter, QSize size, QTransform const& toDevice,
    std::function<bool()> const& isTimeOver)
{
    bool isReplaced = adoptScale(plotter, size, toDevice);
    bool const isExact = m_cache.catchUp(plotter, isTimeOver);
    if (isExact) {
        isReplaced = isReplaced || m_preview;
        m_preview.reset();
        m_beforeChange.reset();
        m_changed = m_cache.takeChanged();
    } else {
        if (!m_preview)
            m_preview
                = m_beforeChange ? m_beforeChange->stretched(plotter, size, toDevice) : m_cache;
        m_preview->skipToNewest(plotter);
        m_changed = m_preview->takeChanged();
    }
    if (isReplaced)
        m_changed = QRect(QPoint(0, 0), size);
    return isExact;
}

// Returns whether the picture begins again.
bool SweepRenderer::adoptScale(Plotter const& plotter, QSize size, QTransform const& toDevice)
{
    bool const isReset = std::exchange(m_resets, plotter.resets()) != plotter.resets();
    if (!isReset && m_cache.fits(plotter, size, toDevice))
        return false;
    if (isReset)
        m_beforeChange.reset();
    else if (!m_beforeChange)
        m_beforeChange = m_preview ? *m_preview : m_cache;
    m_preview.reset();
    m_cache = SweepCache(plotter, size, toDevice);
    return true;
}

} // namespace tensio
