#include "feedback/SweepPicture.h"

#include "feedback/Plotter.h"

#include <utility>

namespace tensio {

bool SweepPicture::draw(QPainter& painter, Plotter const& plotter, QSize size,
    QTransform const& toDevice, TimeSlice const& slice)
{
    follow(plotter, size, toDevice);
    bool const isExact = catchUp(plotter, slice);
    m_shown.draw(painter, plotter);
    return isExact;
}

void SweepPicture::follow(Plotter const& plotter, QSize size, QTransform const& toDevice)
{
    if (m_resets != plotter.resets()) {
        m_resets = plotter.resets();
        m_shown = SweepLayer(plotter, size, toDevice);
        m_rebuilt.reset();
    } else if (!m_shown.fits(plotter, size, toDevice)) {
        // A further change before the first is worked off starts from the same picture again, lest
        // the window being resized blur it more and more.
        if (!m_rebuilt)
            m_beforeChange = std::exchange(m_shown, {});
        m_shown = m_beforeChange.stretched(plotter, size, toDevice);
        m_rebuilt.emplace(plotter, size, toDevice);
    }
}

bool SweepPicture::catchUp(Plotter const& plotter, TimeSlice const& slice)
{
    bool const isShownComplete = m_shown.catchUp(plotter, slice);
    if (!m_rebuilt)
        return isShownComplete;
    if (!m_rebuilt->catchUp(plotter, slice))
        return false;
    m_shown = *std::exchange(m_rebuilt, std::nullopt);
    m_beforeChange = {};
    return true;
}

} // namespace tensio
