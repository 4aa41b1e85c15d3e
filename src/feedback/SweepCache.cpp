#include "feedback/SweepCache.h"

#include "feedback/PartOfImage.h"
#include "feedback/Plotter.h"

#include <QPainter>

#include <algorithm>
#include <cstring>

namespace tensio {

namespace {

// With wide strips less of a sweep is stroked twice, but one strip of noise must not hold up a
// frame, and Qt's rasterizer begins a stroke again for every few kilobytes of edge pixels.
constexpr int stripColumns = 8;

void copyPixels(QImage& to, QImage const& from, QRect area)
{
    auto const bytes = static_cast<std::size_t>(area.width()) * sizeof(QRgb);
    auto* pixels = to.bits();
    for (int row = area.top(); row <= area.bottom(); ++row) {
        auto const first = row * to.bytesPerLine() + area.left() * qsizetype {sizeof(QRgb)};
        std::memcpy(pixels + first, from.constBits() + first, bytes);
    }
}

} // namespace

SweepCache::SweepCache(SweepScale const& scale)
    : m_scale(scale)
    , m_picture(scale.size, QImage::Format_ARGB32_Premultiplied)
    , m_below(scale.size, m_picture.format())
{
    m_picture.fill(Qt::transparent);
    m_below.fill(Qt::transparent);
}

SweepCache SweepCache::stretched(SweepScale const& scale) const
{
    SweepCache cache(scale);
    QPainter painter(&cache.m_picture);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setTransform(
        (m_scale.toUnits * m_scale.toDevice).inverted() * (scale.toUnits * scale.toDevice));
    painter.drawImage(0, 0, m_picture);
    return cache;
}

bool SweepCache::catchUp(Plotter const& plotter, std::function<bool()> const& isTimeOver)
{
    m_changed = {};
    auto const newest = plotter.paths().size() - 1;
    bool isOver = false;
    while (m_sweep < newest || m_points < plotter.path().count) {
        if (isOver)
            return false;
        bool const isStrokedByPoints = m_sweep == newest || m_points > 0;
        if (isStrokedByPoints ? strokeNew(plotter) : strokeFinished(plotter))
            isOver = isTimeOver();
        else
            beginSweep(m_sweep + 1);
    }
    return true;
}

void SweepCache::skipToNewest(Plotter const& plotter)
{
    auto const& sweeps = plotter.paths();
    // The newest point may be the last of a full sweep.
    auto const newest = sweeps.size() - (sweeps.size() > 1 && sweeps.back().count == 0 ? 2 : 1);
    auto const count = sweeps[newest].count;
    auto const first = count - std::min(count, pointsPerStrip());
    if (m_sweep < newest || m_points < first) {
        beginSweep(newest);
        m_points = first;
    }
    catchUp(plotter, [] { return false; });
}

std::size_t SweepCache::pointsPerStrip() const
{
    return static_cast<std::size_t>(
        std::max(stripColumns / (m_scale.toUnits.m11() * m_scale.toDevice.m11()), 1.0));
}

void SweepCache::beginSweep(std::size_t sweep)
{
    m_sweep = sweep;
    m_points = 0;
    m_column = 0;
}

// Strokes the next points of a sweep that may go on. Returns false if there are none.
bool SweepCache::strokeNew(Plotter const& plotter)
{
    auto const count = plotter.paths()[m_sweep].count;
    if (m_points == count)
        return false;
    auto const end = std::min(m_points + pointsPerStrip(), count);
    auto const ink = m_scale.toDevice.mapRect(plotter.addedInk(m_sweep, m_points, end));
    auto const area = ink.toAlignedRect() & m_picture.rect();
    m_points = end;
    if (area.isEmpty())
        return true;
    if (area.right() >= m_column) {
        // Far enough that few frames copy: each copy touches every row.
        auto const next = area.right() + 4 * stripColumns;
        QRect const untouched(m_column, 0, next - m_column, m_picture.height());
        copyPixels(m_below, m_picture, untouched & m_picture.rect());
        m_column = next;
    }
    copyPixels(m_picture, m_below, area);
    stroke(plotter, end, area);
    return true;
}

// Strokes the next columns of a sweep that was full before its first point was stroked. Returns
// false if there are none.
bool SweepCache::strokeFinished(Plotter const& plotter)
{
    auto const count = plotter.paths()[m_sweep].count;
    auto const lastInk = m_scale.toDevice.mapRect(plotter.addedInk(m_sweep, count, count));
    QRect const strip(m_column, 0, stripColumns, m_picture.height());
    auto const area = strip & m_picture.rect();
    if (area.isEmpty() || m_column >= lastInk.right())
        return false;
    m_column += stripColumns;
    stroke(plotter, count, area);
    return true;
}

void SweepCache::stroke(Plotter const& plotter, std::size_t end, QRect area)
{
    m_changed |= area;
    auto part = partOf(m_picture, area);
    QPainter painter(&part);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(-area.topLeft());
    painter.setTransform(m_scale.toDevice, true);
    plotter.draw(painter, m_sweep, end, m_scale.toDevice.inverted().mapRect(QRectF(area)));
}

} // namespace tensio
