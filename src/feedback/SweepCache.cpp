#include "feedback/SweepCache.h"

#include "feedback/Plotter.h"

#include <QPainter>

#include <algorithm>
#include <cstring>

namespace tensio {

namespace {

// Wide strips stroke less of a sweep twice, but one strip of noise must not hold up a frame.
constexpr int stripColumns = 16;

void copyPixels(QImage& to, QImage const& from, QRect area)
{
    auto const offset = static_cast<std::size_t>(area.x()) * sizeof(QRgb);
    auto const bytes = static_cast<std::size_t>(area.width()) * sizeof(QRgb);
    for (int row = area.top(); row <= area.bottom(); ++row)
        std::memcpy(to.scanLine(row) + offset, from.constScanLine(row) + offset, bytes);
}

} // namespace

SweepCache::SweepCache(Plotter const& plotter, QSize size, QTransform const& toDevice)
    : m_toUnits(plotter.toUnits())
    , m_toDevice(toDevice)
    , m_picture(size, QImage::Format_ARGB32_Premultiplied)
{
    m_picture.fill(Qt::transparent);
    m_below = m_picture;
}

bool SweepCache::fits(Plotter const& plotter, QSize size, QTransform const& toDevice) const
{
    return m_picture.size() == size && m_toDevice == toDevice && m_toUnits == plotter.toUnits();
}

SweepCache SweepCache::stretched(
    Plotter const& plotter, QSize size, QTransform const& toDevice) const
{
    SweepCache cache(plotter, size, toDevice);
    QPainter painter(&cache.m_picture);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setTransform(
        (m_toUnits * m_toDevice).inverted() * (cache.m_toUnits * cache.m_toDevice));
    painter.drawImage(0, 0, m_picture);
    painter.end();
    cache.m_below = cache.m_picture;
    return cache;
}

bool SweepCache::catchUp(Plotter const& plotter, std::function<bool()> const& isTimeOver)
{
    for (auto const& sweeps = plotter.paths();; beginSweep(m_sweep + 1)) {
        auto const count = sweeps[m_sweep].count;
        while (m_points < count) {
            stroke(plotter, std::min(m_points + pointsPerStrip(), count));
            if (isTimeOver())
                return false;
        }
        if (m_sweep + 1 == sweeps.size())
            return true;
    }
}

void SweepCache::skipToNewest(Plotter const& plotter)
{
    auto const& sweeps = plotter.paths();
    // The newest point may be the last of a full sweep.
    auto const newest = sweeps.size() - (sweeps.size() > 1 && sweeps.back().count == 0 ? 2 : 1);
    auto const count = sweeps[newest].count;
    auto const first = count - std::min(count, pointsPerStrip());
    if (m_sweep < newest || m_points < first) {
        m_below = m_picture;
        beginSweep(newest);
        m_points = first;
    }
    catchUp(plotter, [] { return false; });
}

std::size_t SweepCache::pointsPerStrip() const
{
    return static_cast<std::size_t>(
        std::max(stripColumns / (m_toUnits.m11() * m_toDevice.m11()), 1.0));
}

void SweepCache::beginSweep(std::size_t sweep)
{
    finishColumns(m_picture.width());
    m_sweep = sweep;
    m_points = 0;
    m_column = 0;
}

void SweepCache::stroke(Plotter const& plotter, std::size_t end)
{
    auto const ink = m_toDevice.mapRect(plotter.addedInk(m_sweep, m_points, end));
    auto const area = ink.toAlignedRect() & m_picture.rect();
    m_points = end;
    if (area.isEmpty())
        return;
    m_changed |= area;
    // No later point touches the columns before.
    if (area.left() - m_column >= stripColumns)
        finishColumns(area.left());
    copyPixels(m_picture, m_below, area);
    QPainter painter(&m_picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipRect(area);
    painter.setTransform(m_toDevice);
    plotter.draw(painter, m_sweep, end, m_toDevice.inverted().mapRect(QRectF(area)));
}

void SweepCache::finishColumns(int end)
{
    copyPixels(m_below, m_picture, QRect(m_column, 0, end - m_column, m_picture.height()));
    m_column = end;
}

} // namespace tensio
