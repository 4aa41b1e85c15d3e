#include "feedback/SweepPicture.h"

#include "feedback/Plotter.h"

#include <utility>

namespace tensio {

bool SweepPicture::update(
    Plotter const& plotter, QSize size, QTransform const& toDevice, TimeSlice const& slice)
{
    bool isAnother = follow(plotter, size, toDevice);
    auto const sweep = m_shown.sweep();
    auto const begin = m_shown.firstLiveColumn();
    bool isExact = m_shown.catchUp(plotter, slice);
    if (m_rebuilt) {
        isExact = m_rebuilt->catchUp(plotter, slice);
        if (isExact) {
            m_shown = *std::exchange(m_rebuilt, std::nullopt);
            m_beforeChange = {};
            isAnother = true;
        }
    }
    m_changed = QRect(QPoint(0, 0), size);
    if (!isAnother && sweep == m_shown.sweep())
        m_changed.setRect(begin, 0, m_shown.endOfLiveColumns(plotter) - begin, size.height());
    return isExact;
}

bool SweepPicture::follow(Plotter const& plotter, QSize size, QTransform const& toDevice)
{
    if (m_resets != plotter.resets()) {
        m_resets = plotter.resets();
        m_shown = SweepLayer(plotter, size, toDevice);
        m_rebuilt.reset();
        return true;
    }
    if (m_shown.fits(plotter, size, toDevice))
        return false;
    // A further change before the first is worked off starts from the same picture again, lest the
    // window being resized blur it more and more.
    if (!m_rebuilt)
        m_beforeChange = std::exchange(m_shown, {});
    m_shown = m_beforeChange.stretched(plotter, size, toDevice);
    m_rebuilt.emplace(plotter, size, toDevice);
    return true;
}

} // namespace tensio
