#include "feedback/GraphView.h"

#include "core/Measurement.h"
#include "reactive/assignIfNew.h"
#include "toolkit/Colors.h"
#include "toolkit/DesignFrame.h"
#include "toolkit/ImageView.h"

#include <QPainter>
#include <QPainterPath>

#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;

namespace tensio {

namespace {

// A third of a frame of the screen, as one strip of noise can take another third.
constexpr Seconds frameBudget {0.005};

std::vector<QColor> sweepColors()
{
    return {0xffffff, 0xffff00, 0x00ff00, 0x00ffff, 0xff8000, 0xff00ff};
}

void placeAtHeight(ImageView& image, double height)
{
    auto frame = designFrame(image);
    frame.moveBottom(designFrame(*image.parentWidget()).height() - height);
    setDesignFrame(image, frame);
}

} // namespace

GraphView::GraphView(QWidget* parent)
    : PressureView(80.0f, 10.0f, colorFromHexString(u"#001c58"_s), parent)
{
}

void GraphView::setUp(ImageView& maxPressureImage, ImageView& targetPressureImage)
{
    m_maxPressureImage = &maxPressureImage;
    m_targetPressureImage = &targetPressureImage;
    m_markerHeights.reset();
    auto const size = designFrame(*this).size();
    m_plotter.emplace(sweepColors(), size.width(), size.height() - 2.0 * border, pointInterval);
    m_plotter->setUpperBoundPressure(upperBoundPressure.value());
    m_plotter->setTimeWindow(static_cast<std::int64_t>(timeWindow.value()));
    m_resets.reset();
}

QRegion GraphView::render()
{
    auto changed = changedField();
    if (assignIfNew(m_timeWindow, timeWindow.value()))
        changed = QRect({}, pictureSize());
    renderField(changed);
    placeMarkers();
    return m_plotter ? changed | renderSweeps(*m_plotter) : changed;
}

// Returns where the sweeps differ from the latest frame. After a change of scale or a long pause,
// stroking can take seconds: it is spread over the frames that follow. Until it is done, the old
// picture is shown, resized, with the newest pressures.
QRect GraphView::renderSweeps(Plotter const& plotter)
{
    bool isReplaced = adoptScale(plotter);
    auto const end = m_clock ? m_clock->now() + frameBudget : Seconds();
    auto const isTimeOver = [this, end] { return m_clock && m_clock->now() >= end; };
    bool const isExact = m_sweeps.catchUp(plotter, isTimeOver);
    if (isExact) {
        isReplaced = isReplaced || m_preview;
        m_preview.reset();
        m_beforeChange.reset();
    } else {
        if (!m_preview)
            m_preview = m_beforeChange ? m_beforeChange->stretched(m_sweeps.scale()) : m_sweeps;
        m_preview->skipToNewest(plotter);
        Q_EMIT needsFrame();
    }
    return isReplaced ? QRect({}, pictureSize()) : m_sweeps.changed() | shownSweeps().changed();
}

// Returns whether the sweeps are to be stroked from the first on.
bool GraphView::adoptScale(Plotter const& plotter)
{
    SweepScale const scale {pictureSize(), plotter.toUnits(), toDevice()};
    bool const isReset = assignIfNew(m_resets, plotter.resets());
    if (!isReset && m_sweeps.scale() == scale)
        return false;
    if (isReset)
        m_beforeChange.reset();
    else if (!m_beforeChange)
        m_beforeChange = shownSweeps();
    m_preview.reset();
    m_sweeps = SweepCache(scale);
    return true;
}

void GraphView::drawField(QPainter& painter) const
{
    auto const size = designSize();
    drawScale(painter, border, size.width() - 2.0 * border, QPen(Qt::white, 0.5));
    for (auto const& [stepSeconds, lineWidth] : {std::pair(1.0f, 0.5), std::pair(5.0f, 1.0)}) {
        auto const unitsPerSecond = size.width() / static_cast<double>(timeWindow.value());
        QPainterPath times;
        for (float time = 0.0f; time <= timeWindow.value(); time += stepSeconds) {
            auto const x = std::round(unitsPerSecond * static_cast<double>(time));
            times.moveTo(x, 0.0);
            times.lineTo(x, size.height());
        }
        painter.strokePath(times, QPen(Qt::white, lineWidth, Qt::SolidLine, Qt::FlatCap));
    }
}

void GraphView::placeMarkers()
{
    std::pair const heights(heightOf(maxPressure.value()), heightOf(targetPressure.value()));
    if (!m_maxPressureImage || !assignIfNew(m_markerHeights, heights))
        return;
    placeAtHeight(*m_maxPressureImage, heights.first);
    placeAtHeight(*m_targetPressureImage, heights.second);
}

} // namespace tensio
