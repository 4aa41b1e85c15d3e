#pragma once

#include "feedback/Plotter.h"
#include "feedback/PressureView.h"
#include "feedback/SweepRenderer.h"
#include "reactive/Scheduler.h"

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

    // Builds an empty trace for the present size and scales. The images are not owned.
    void setUp(ImageView& maxPressureImage, ImageView& targetPressureImage);

    // Null until setUp.
    Plotter* plotter() { return m_plotter ? &*m_plotter : nullptr; }

    // With a clock, slow redraws are spread over several frames. It must outlive the view.
    void setClock(Scheduler const& clock) { m_clock = &clock; }

    // False if the latest frame left work for the next.
    bool isSettled() const { return m_isSettled; }

Q_SIGNALS:
    // The rendered frame is not settled.
    void needsFrame();

protected:
    QRegion render() override;
    void drawField(QPainter& painter) const override;
    void copyTo(QPainter& painter, QRect area) const override;

private:
    QRegion renderSweeps();
    void placeMarkers();

    std::optional<Plotter> m_plotter;
    ImageView* m_maxPressureImage = nullptr;
    ImageView* m_targetPressureImage = nullptr;
    // Of maximum and target, once they have been placed.
    std::optional<std::pair<double, double>> m_markerHeights;

    SweepRenderer m_sweeps;
    float m_timeWindow = 0.0f;
    Scheduler const* m_clock = nullptr;
    bool m_isSettled = true;
};

} // namespace tensio
