#include "feedback/SweepLayer.h"

#include "feedback/Plotter.h"
#include "feedback/TimeSlice.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace tensio {

namespace {
// Narrow strips leave less of the running sweep to stroke in each frame. Wide ones stroke less of a
// finished sweep twice, but one strip of noise must not hold up a frame.
constexpr int runningStrip = 4;
constexpr int finishedStrip = 16;
} // namespace

SweepLayer::SweepLayer(Plotter const& plotter, QSize size, QTransform const& toDevice)
    : m_toUnits(plotter.toUnits())
    , m_toDevice(toDevice)
    , m_finished(size, QImage::Format_ARGB32_Premultiplied)
{
    m_finished.fill(Qt::transparent);
}

bool SweepLayer::fits(Plotter const& plotter, QSize size, QTransform const& toDevice) const
{
    return m_finished.size() == size && m_toDevice == toDevice && m_toUnits == plotter.toUnits();
}

SweepLayer SweepLayer::stretched(
    Plotter const& plotter, QSize size, QTransform const& toDevice) const
{
    SweepLayer layer(plotter, size, toDevice);
    auto const stretch = (m_toUnits * m_toDevice).inverted() * (layer.m_toUnits * layer.m_toDevice);
    QPainter painter(&layer.m_finished);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setTransform(stretch);
    painter.drawImage(0, 0, m_finished);
    layer.m_sweep = m_sweep;
    layer.m_column = static_cast<int>(
        std::clamp(m_column * stretch.m11(), 0.0, static_cast<double>(size.width())));
    return layer;
}

bool SweepLayer::catchUp(Plotter const& plotter, TimeSlice const& slice)
{
    while (m_sweep + 1 < plotter.paths().size()) {
        if (!commitUpTo(plotter, m_finished.width(), finishedStrip, slice))
            return false;
        ++m_sweep;
        m_column = 0;
    }
    auto const finished = lastFinishedColumn(plotter);
    return commitUpTo(
        plotter, finished - (finished - m_column) % runningStrip, runningStrip, slice);
}

void SweepLayer::draw(QPainter& painter, Plotter const& plotter) const
{
    int const end = endOfLiveColumns(plotter);
    drawFinished(painter, 0, m_column);
    drawFinished(painter, end, m_finished.width());
    if (end == m_column)
        return;
    // The sweep's end goes over a copy of the finished columns under it, so that blending happens
    // in the same order and the same precision as if it had been committed.
    auto tail = m_finished.copy(m_column, 0, end - m_column, m_finished.height());
    stroke(tail, m_column, plotter, m_column, end);
    painter.drawImage(m_column, 0, tail);
}

void SweepLayer::drawFinished(QPainter& painter, int fromColumn, int endColumn) const
{
    QRect const columns(fromColumn, 0, endColumn - fromColumn, m_finished.height());
    // The painter would take an empty part for the whole.
    if (!columns.isEmpty())
        painter.drawImage(columns.topLeft(), m_finished, columns);
}

int SweepLayer::endOfLiveColumns(Plotter const& plotter) const
{
    auto const path = plotter.paths()[m_sweep];
    if (path.count == 0)
        return m_column;
    auto const rightEdge = (plotter.rightEnd(path) + Plotter::reach) * m_toDevice.m11();
    auto const end = std::min(std::ceil(rightEdge) + 1.0, static_cast<double>(m_finished.width()));
    return std::max(m_column, static_cast<int>(end));
}

bool SweepLayer::commitUpTo(
    Plotter const& plotter, int endColumn, int stripColumns, TimeSlice const& slice)
{
    while (m_column < endColumn) {
        auto const end = std::min(m_column + stripColumns, endColumn);
        stroke(m_finished, 0, plotter, m_column, end);
        m_column = end;
        if (slice.isOver())
            return false;
    }
    return true;
}

void SweepLayer::stroke(
    QImage& image, int imageColumn, Plotter const& plotter, int fromColumn, int endColumn) const
{
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipRect(fromColumn - imageColumn, 0, endColumn - fromColumn, image.height());
    painter.setTransform(m_toDevice * QTransform::fromTranslate(-imageColumn, 0.0));
    plotter.strokeColumns(
        painter, m_sweep, fromColumn / m_toDevice.m11(), endColumn / m_toDevice.m11());
}

int SweepLayer::lastFinishedColumn(Plotter const& plotter) const
{
    auto const path = plotter.paths()[m_sweep];
    if (path.count == 0)
        return m_column;
    auto const untouchable = (plotter.rightEnd(path) - Plotter::reach) * m_toDevice.m11();
    // A pixel less, for the soft edge.
    auto const column
        = std::clamp(std::floor(untouchable) - 1.0, 0.0, static_cast<double>(m_finished.width()));
    return std::max(m_column, static_cast<int>(column));
}

} // namespace tensio
