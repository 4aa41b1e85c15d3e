#include "feedback/SweepCache.h"

#include "feedback/FrameBudget.h"
#include "feedback/Plotter.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace tensio {

namespace {
// Wide strips stroke less of a sweep twice, but one strip of noise must not exceed the budget.
constexpr int stripColumns = 16;
constexpr int newestColumns = 2 * stripColumns;
} // namespace

SweepCache::SweepCache(Plotter const& plotter, QSize size, QTransform const& toDevice)
    : m_toUnits(plotter.toUnits())
    , m_toDevice(toDevice)
    , m_picture(size, QImage::Format_ARGB32_Premultiplied)
{
    m_picture.fill(Qt::transparent);
}

bool SweepCache::fits(Plotter const& plotter, QSize size, QTransform const& toDevice) const
{
    return m_picture.size() == size && m_toDevice == toDevice && m_toUnits == plotter.toUnits();
}

SweepCache SweepCache::stretched(
    Plotter const& plotter, QSize size, QTransform const& toDevice) const
{
    SweepCache cache(plotter, size, toDevice);
    auto const stretch = (m_toUnits * m_toDevice).inverted() * (cache.m_toUnits * cache.m_toDevice);
    QPainter painter(&cache.m_picture);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setTransform(stretch);
    painter.drawImage(0, 0, m_picture);
    cache.m_sweep = m_sweep;
    cache.m_column = static_cast<int>(
        std::clamp(m_column * stretch.m11(), 0.0, static_cast<double>(size.width())));
    return cache;
}

bool SweepCache::catchUp(Plotter const& plotter, FrameBudget const& budget)
{
    removeTail();
    while (m_sweep + 1 < plotter.paths().size()) {
        if (!strokeUpTo(plotter, endOfInk(plotter), budget))
            return false;
        beginSweep(m_sweep + 1);
    }
    if (!strokeUpTo(plotter, firstLiveColumn(plotter) - stripColumns, budget))
        return false;
    strokeTail(plotter);
    return true;
}

void SweepCache::skipToNewest(Plotter const& plotter)
{
    removeTail();
    auto const count = plotter.paths().size();
    if (m_sweep + 2 < count)
        beginSweep(count - 2);
    if (m_sweep + 1 < count) {
        // The newest point may be the last of a full sweep.
        auto const end = endOfInk(plotter);
        m_column = std::max(m_column, end - newestColumns);
        stroke(plotter, end);
        beginSweep(count - 1);
    }
    m_column = std::max(m_column, firstLiveColumn(plotter) - newestColumns);
    strokeTail(plotter);
}

void SweepCache::beginSweep(std::size_t sweep)
{
    m_sweep = sweep;
    m_column = 0;
}

bool SweepCache::strokeUpTo(Plotter const& plotter, int endColumn, FrameBudget const& budget)
{
    while (m_column < endColumn) {
        auto const end = std::min(m_column + stripColumns, endColumn);
        stroke(plotter, end);
        m_column = end;
        if (budget.isOver())
            return false;
    }
    return true;
}

void SweepCache::strokeTail(Plotter const& plotter)
{
    auto const live = firstLiveColumn(plotter);
    auto const end = endOfInk(plotter);
    m_tail = inkArea(plotter, live, end);
    // QImage::copy would take an empty area for the whole picture.
    if (!m_tail.isEmpty())
        m_underTail = m_picture.copy(m_tail);
    stroke(plotter, end);
    m_column = live;
}

void SweepCache::removeTail()
{
    if (m_underTail.isNull())
        return;
    m_changed |= m_tail;
    auto const bytes = static_cast<std::size_t>(m_tail.width()) * sizeof(QRgb);
    for (int row = 0; row < m_tail.height(); ++row) {
        auto* pixels = reinterpret_cast<QRgb*>(m_picture.scanLine(m_tail.y() + row));
        std::memcpy(pixels + m_tail.x(), m_underTail.constScanLine(row), bytes);
    }
    m_underTail = {};
}

void SweepCache::stroke(Plotter const& plotter, int endColumn)
{
    auto const area = inkArea(plotter, m_column, endColumn);
    if (area.isEmpty())
        return;
    m_changed |= area;
    QPainter painter(&m_picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipRect(area);
    painter.setTransform(m_toDevice);
    plotter.draw(painter, m_sweep, m_column / m_toDevice.m11(), endColumn / m_toDevice.m11());
}

QRect SweepCache::inkArea(Plotter const& plotter, int fromColumn, int endColumn) const
{
    auto const bounds
        = plotter.bounds(m_sweep, fromColumn / m_toDevice.m11(), endColumn / m_toDevice.m11());
    auto const rows = m_toDevice.mapRect(bounds).toAlignedRect().adjusted(0, -1, 0, 1);
    return QRect(fromColumn, rows.y(), endColumn - fromColumn, rows.height()) & m_picture.rect();
}

// The first column that a later point can touch.
int SweepCache::firstLiveColumn(Plotter const& plotter) const
{
    auto const untouchable
        = (plotter.rightEnd(plotter.paths()[m_sweep]) - Plotter::reach) * m_toDevice.m11();
    auto const column
        = std::clamp(std::floor(untouchable), 0.0, static_cast<double>(m_picture.width()));
    return std::max(m_column, static_cast<int>(column));
}

int SweepCache::endOfInk(Plotter const& plotter) const
{
    auto const rightEdge
        = (plotter.rightEnd(plotter.paths()[m_sweep]) + Plotter::reach) * m_toDevice.m11();
    auto const end = std::min(std::ceil(rightEdge) + 1.0, static_cast<double>(m_picture.width()));
    return std::max(m_column, static_cast<int>(end));
}

} // namespace tensio
