#pragma once

#include "feedback/Plotter.h"
#include "feedback/SweepPicture.h"
#include "feedback/TimeSlice.h"
#include "reactive/MutableProperty.h"
#include "toolkit/Accessible.h"

#include <QImage>
#include <QWidget>

#include <optional>

namespace tensio {

class ImageView;

// The pressure–time graph: grid, target line, maximum line and, over them, the live sweeps. It
// moves the two marker images to the height of their lines. It has no observers: its owner binds
// the values and asks for the redraw.
class GraphView
    : public QWidget
    , public Accessible {
    Q_OBJECT

public:
    using QWidget::QWidget;

    MutableProperty<float> upperBoundPressure {80.0f};
    MutableProperty<float> maxPressure {10.0f};
    MutableProperty<float> targetPressure {0.0f};
    MutableProperty<float> currentPressure {0.0f};
    MutableProperty<QColor> targetColor {QColor()};
    MutableProperty<float> timeWindow {30.0f};

    QAccessible::Role accessibleRole() const override { return QAccessible::Chart; }

    // Builds an empty trace for the present size and scales. The images are not owned.
    void setUp(ImageView& maxPressureImage, ImageView& targetPressureImage);

    // Null until setUp.
    Plotter* plotter() { return m_plotter ? &*m_plotter : nullptr; }

    // By this clock, work that would hold up a frame is spread over several. Without one it is not.
    // It must outlive the view.
    void setClock(Scheduler const& clock) { m_clock = &clock; }

    // The picture for a surface of that size in device pixels; it keeps until the next call.
    QImage const& frame(QSize size, double devicePixelRatio = 1.0);
    // Whether the latest frame left nothing to do for the next.
    bool isSettled() const { return m_isSettled; }

Q_SIGNALS:
    // A frame was painted that is not settled.
    void needsFrame();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    // What lies under the sweeps.
    struct Ground {
        QSize size;
        float upperBound = 0.0f;
        float timeWindow = 0.0f;
        double targetHeight = 0.0;
        QColor targetColor;
        double maxHeight = 0.0;

        bool operator==(Ground const&) const = default;
    };

    TimeSlice timeSlice() const;
    bool renewGround(QSize size);
    void paint(QRect area, QTransform const& toDevice);
    QImage renderBackground(QSize size) const;
    void drawGrid(QPainter& painter) const;
    void drawLine(QPainter& painter, double y, QColor const& color) const;
    double heightOf(float pressure) const;
    void placeMarkers();

    std::optional<Plotter> m_plotter;
    ImageView* m_maxPressureImage = nullptr;
    ImageView* m_targetPressureImage = nullptr;

    SweepPicture m_sweeps;
    QImage m_background;
    Ground m_ground;
    QImage m_frame;
    Scheduler const* m_clock = nullptr;
    bool m_isSettled = true;
};

} // namespace tensio
