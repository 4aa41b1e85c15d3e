#pragma once

#include "feedback/Plotter.h"
#include "feedback/PressureView.h"
#include "feedback/SweepCache.h"
#include "reactive/Scheduler.h"

#include <cstdint>
#include <optional>
#include <utility>

namespace tensio {

class ImageView;

// The pressure–time graph: a grid and, over the lines, the live sweeps. It moves the two marker
// images to the height of their lines. currentPressure is not drawn; the plotter has the points.
class GraphView : public PressureView {
    Q_OBJECT

public:
    explicit GraphView(QWidget* parent = nullptr);

    // Seconds.
    MutableProperty<float> timeWindow {30.0f};

    QAccessible::Role accessibleRole() const override { return QAccessible::Chart; }

    // Builds an empty trace for the present size and scales.
    void setUp(ImageView& maxPressureImage, ImageView& targetPressureImage);

    // Null until setUp.
    Plotter* plotter() { return m_plotter ? &*m_plotter : nullptr; }

    // With a clock, slow redraws are spread over several frames.
    void setClock(Scheduler const& clock) { m_clock = &clock; }

    // False if the latest frame left work for the next.
    bool isSettled() const { return !m_preview; }

Q_SIGNALS:
    // The rendered frame is not settled.
    void needsFrame();

protected:
    QRegion render() override;
    void drawField(QPainter& painter) const override;
    QImage overlay() const override { return shownSweeps().picture(); }

private:
    QRect renderSweeps(Plotter const& plotter);
    bool adoptScale(Plotter const& plotter);
    SweepCache const& shownSweeps() const { return m_preview ? *m_preview : m_sweeps; }
    void placeMarkers();

    std::optional<Plotter> m_plotter;
    ImageView* m_maxPressureImage = nullptr;
    ImageView* m_targetPressureImage = nullptr;
    // Of maximum and target, once they have been placed.
    std::optional<std::pair<double, double>> m_markerHeights;

    SweepCache m_sweeps;
    // Shown while the sweeps are behind.
    std::optional<SweepCache> m_preview;
    // What previews are made from: resizing a preview again would blur it more and more.
    std::optional<SweepCache> m_beforeChange;
    // The plotter's when m_sweeps was begun.
    std::optional<std::uint64_t> m_resets;
    float m_timeWindow = 0.0f;
    Scheduler const* m_clock = nullptr;
};

} // namespace tensio
