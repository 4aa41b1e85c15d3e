#include "feedback/GraphView.h"

#include "core/Measurement.h"
#include "toolkit/Color.h"
#include "toolkit/DesignFrame.h"
#include "toolkit/ImageView.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace tensio {

namespace {

constexpr double border = 2.0;
constexpr double farAway = 1e6;
// Half a frame of the screen; the other half belongs to the rest of the window.
constexpr Seconds sliceLength {0.008};

std::vector<QColor> sweepColors()
{
    std::vector<QColor> colors;
    for (auto const* text : {"#ffffff", "#ffff00", "#00ff00", "#00ffff", "#ff8000", "#ff00ff"})
        colors.push_back(colorFromHexString(QString::fromLatin1(text)));
    return colors;
}

QRectF inside(QSizeF designSize)
{
    return QRectF(QPointF(0.0, 0.0), designSize).adjusted(border, border, -border, -border);
}

void keepAtHeight(ImageView& image, double y)
{
    auto const parentHeight = designFrame(*image.parentWidget()).height();
    auto const frame = designFrame(image);
    // A widget's place is whole pixels, which cannot be infinite.
    auto const place = std::isnan(y) ? 0.0 : std::clamp(y, -farAway, farAway);
    auto const moved
        = flipped(QRectF(frame.x(), place, frame.width(), frame.height()), parentHeight);
    if (moved != frame)
        setDesignFrame(image, moved);
}

} // namespace

void GraphView::setUp(ImageView& maxPressureImage, ImageView& targetPressureImage)
{
    m_maxPressureImage = &maxPressureImage;
    m_targetPressureImage = &targetPressureImage;
    auto const size = designFrame(*this).size();
    m_plotter.emplace(sweepColors(), size.width(), size.height() - 2.0 * border, pointInterval);
    m_plotter->setUpperBoundPressure(upperBoundPressure.value());
    m_plotter->setTimeWindow(static_cast<std::int64_t>(timeWindow.value()));
    m_sweeps = {};
}

void GraphView::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    // At a fractional scale the picture may end a pixel short of the view: the border goes on
    // there.
    painter.fillRect(QRect(width() - 1, 0, 1, height()), Qt::black);
    painter.fillRect(QRect(0, height() - 1, width(), 1), Qt::black);
    painter.drawImage(0, 0, frame(size() * devicePixelRatioF(), devicePixelRatioF()));
    placeMarkers();
    if (!m_isSettled)
        Q_EMIT needsFrame();
}

TimeSlice GraphView::timeSlice() const
{
    return m_clock ? TimeSlice(*m_clock, sliceLength) : TimeSlice();
}

QImage const& GraphView::frame(QSize size, double devicePixelRatio)
{
    auto const toDevice = designToSurface(designFrame(*this).size(), size);
    bool const isGroundNew = renewGround(size);
    if (m_plotter)
        m_isSettled = m_sweeps.update(*m_plotter, size, toDevice, timeSlice());
    m_frame.setDevicePixelRatio(1.0);
    auto const changed = isGroundNew ? QRect(QPoint(0, 0), size) : m_sweeps.changed();
    if (!changed.isEmpty())
        paint(changed, toDevice);
    m_frame.setDevicePixelRatio(devicePixelRatio);
    return m_frame;
}

void GraphView::paint(QRect area, QTransform const& toDevice)
{
    QPainter painter(&m_frame);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawImage(area, m_background, area);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipRect(wholePixels(toDevice.mapRect(inside(designFrame(*this).size()))) & area);
    painter.setTransform(toDevice);
    drawLine(painter, m_ground.targetHeight, m_ground.targetColor);
    drawLine(painter, m_ground.maxHeight, colorFromHexString(QStringLiteral("#4dd736")));
    painter.resetTransform();
    if (m_plotter)
        m_sweeps.draw(painter, *m_plotter);
}

bool GraphView::renewGround(QSize size)
{
    Ground const ground {size, upperBoundPressure.value(), timeWindow.value(),
        heightOf(targetPressure.value()), targetColor.value(), heightOf(maxPressure.value())};
    if (m_ground == ground)
        return false;
    bool const isGridNew = m_ground.size != size || m_ground.upperBound != ground.upperBound
        || m_ground.timeWindow != ground.timeWindow;
    if (isGridNew)
        m_background = renderBackground(size);
    if (m_ground.size != size)
        m_frame = QImage(size, QImage::Format_RGB32);
    m_ground = ground;
    return true;
}

QImage GraphView::renderBackground(QSize size) const
{
    QImage background(size, QImage::Format_RGB32);
    background.fill(Qt::black);
    auto const designSize = designFrame(*this).size();
    auto const toDevice = designToSurface(designSize, size);
    auto const inner = wholePixels(toDevice.mapRect(inside(designSize)));
    QPainter painter(&background);
    painter.fillRect(inner, colorFromHexString(QStringLiteral("#001c58")));
    painter.setClipRect(inner);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setTransform(toDevice);
    drawGrid(painter);
    return background;
}

void GraphView::drawGrid(QPainter& painter) const
{
    auto const size = designFrame(*this).size();
    QPainterPath pressures;
    for (float pressure = 0.0f; pressure <= upperBoundPressure.value(); pressure += 5.0f) {
        auto const y = heightOf(pressure);
        pressures.moveTo(border, y);
        pressures.lineTo(size.width() - 2.0 * border, y);
    }
    painter.strokePath(pressures, QPen(Qt::white, 0.5, Qt::SolidLine, Qt::FlatCap));

    auto const strokeTimes = [&](float stepSeconds, double lineWidth) {
        auto const unitsPerSecond = size.width() / static_cast<double>(timeWindow.value());
        QPainterPath times;
        for (float time = 0.0f; time <= timeWindow.value(); time += stepSeconds) {
            auto const x = std::round(unitsPerSecond * static_cast<double>(time));
            times.moveTo(x, 0.0);
            times.lineTo(x, size.height());
        }
        painter.strokePath(times, QPen(Qt::white, lineWidth, Qt::SolidLine, Qt::FlatCap));
    };
    strokeTimes(1.0f, 0.5);
    strokeTimes(5.0f, 1.0);
}

void GraphView::drawLine(QPainter& painter, double y, QColor const& color) const
{
    auto const size = designFrame(*this).size();
    // Skip lines on the border: at fractional scales the clip would leave a sliver.
    if (!(y > 0.0 && y < size.height()))
        return;
    painter.setPen(QPen(color, 4.0, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(QPointF(0.0, y), QPointF(size.width(), y));
}

double GraphView::heightOf(float pressure) const
{
    auto const height = designFrame(*this).height();
    return std::round(
        static_cast<double>(pressure) / static_cast<double>(upperBoundPressure.value()) * height);
}

void GraphView::placeMarkers()
{
    if (!m_maxPressureImage || !m_targetPressureImage)
        return;
    keepAtHeight(*m_maxPressureImage, heightOf(maxPressure.value()));
    keepAtHeight(*m_targetPressureImage, heightOf(targetPressure.value()));
}

} // namespace tensio
