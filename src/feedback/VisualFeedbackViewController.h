#pragma once

#include "feedback/VisualFeedbackViewModel.h"
#include "reactive/throttle.h"

#include <QObject>
#include <QPointF>

#include <memory>
#include <vector>

class QLabel;
class QWidget;

namespace Ui {
class VisualFeedback;
}

namespace tensio {

// The live area: binds the view-model to gauge, graph and markers, feeds the graph's plotter and
// builds the numbers along the scales.
class VisualFeedbackViewController : public QObject {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(VisualFeedbackViewController)

public:
    VisualFeedbackViewController(
        TensioManager const& tensioManager, RunLoop& runLoop, QWidget& view);
    ~VisualFeedbackViewController() override;

    // Starts a fresh, empty trace.
    void viewWillAppear();

private:
    using Labels = std::vector<std::unique_ptr<QLabel>>;

    void viewDidLoad(RunLoop& runLoop);
    void paceFrames(RunLoop& runLoop);
    void renderFrame();
    void describe();
    void bindViews();
    void observeChanges();
    void attachCommands();
    // The gauge or the graph has something new to show.
    void redraw();
    void placeGaugeTags();
    // A number every 5 units up to the end, which lies that far from zero.
    Labels makeLabels(QLabel const& zeroLabel, float end, QPointF distance);

    QWidget& m_view;
    std::unique_ptr<Ui::VisualFeedback> m_ui;
    VisualFeedbackViewModel m_viewModel;
    Labels m_gaugeLabels;
    Labels m_graphLabels;
    std::shared_ptr<Throttle<Nothing>> m_frames;
    std::shared_ptr<Throttle<Nothing>> m_descriptions;
    // The frame about to be rendered.
    Subscription m_frame;
    Subscriptions m_subscriptions;
};

} // namespace tensio
