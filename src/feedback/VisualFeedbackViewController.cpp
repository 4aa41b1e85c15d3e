#include "feedback/VisualFeedbackViewController.h"

#include "core/NumberText.h"
#include "toolkit/Accessible.h"
#include "toolkit/Buttons.h"
#include "toolkit/DesignFrame.h"
#include "ui_VisualFeedback.h"

#include <QLabel>

using namespace Qt::StringLiterals;

namespace tensio {

namespace {
constexpr Seconds frameInterval {1.0 / 60.0};
// Screen readers cannot speak faster than this.
constexpr Seconds descriptionInterval {0.5};

} // namespace

VisualFeedbackViewController::VisualFeedbackViewController(
    TensioManager const& tensioManager, RunLoop& runLoop, QWidget& view)
    : m_view(view)
    , m_ui(std::make_unique<Ui::VisualFeedback>())
    , m_viewModel(tensioManager, runLoop)
{
    m_ui->setupUi(&m_view);
    viewDidLoad(runLoop);
}

VisualFeedbackViewController::~VisualFeedbackViewController() = default;

void VisualFeedbackViewController::viewDidLoad(RunLoop& runLoop)
{
    m_ui->maxPressureImage->setPicture(Picture::named(u"gauge_max"_s));
    setNameFromTemplate(*m_ui->zeroLabel, m_ui->zeroLabel->text());
    setNameFromTemplate(*m_ui->zeroTimeLabel, m_ui->zeroTimeLabel->text());
    paceFrames(runLoop);
    // The observers need its plotter.
    m_ui->graphView->setUp(*m_ui->maxPressureImage, *m_ui->targetPressureImage);
    bindViews();
    observeChanges();
    attachCommands();
    describe();
}

// Readings may come faster than the screen shows pictures.
void VisualFeedbackViewController::paceFrames(RunLoop& runLoop)
{
    using Pace = Throttle<Nothing>;
    m_frames = std::make_shared<Pace>(frameInterval, runLoop, [this, &runLoop](Nothing) {
        // Not at once: what asks is often one of several changes.
        m_frame = runLoop.scheduleAfter(Seconds(0.0), [this] { renderFrame(); });
    });
    m_descriptions
        = std::make_shared<Pace>(descriptionInterval, runLoop, [this](Nothing) { describe(); });
    m_subscriptions += runLoop.willPause.signal.observeValues([this](Nothing) { renderFrame(); });
    m_ui->graphView->setClock(runLoop);
    connect(m_ui->graphView, &GraphView::needsFrame, this, &VisualFeedbackViewController::redraw);
}

void VisualFeedbackViewController::redraw()
{
    m_frames->receive({});
    m_descriptions->receive({});
}

void VisualFeedbackViewController::renderFrame()
{
    m_ui->gaugeView->renderFrame();
    m_ui->graphView->renderFrame();
}

void VisualFeedbackViewController::describe()
{
    auto const upperBound = static_cast<double>(m_viewModel.upperBoundPressure.value());
    auto const timeWindow = static_cast<double>(m_viewModel.timeWindow.value());
    auto const pressureScale = u"圧力目盛 0〜%1 kPa"_s.arg(upperBound);
    auto const timeScale = u"時間目盛 %1秒"_s.arg(timeWindow);
    auto const maximum = QString::fromStdString(withUnit(m_viewModel.maxPressure.value()));
    auto target = QString::fromStdString(withUnit(m_viewModel.targetPressure.value()));
    if (m_viewModel.model.isBlinking() && m_viewModel.isTargetReached())
        target += u" 達成"_s;
    auto const lines = u"目標 %1、最大圧 %2"_s.arg(target, maximum);
    setAccessibleDescriptionIfChanged(*m_ui->gaugeView, u"%1、%2"_s.arg(pressureScale, lines));
    setAccessibleDescriptionIfChanged(
        *m_ui->graphView, u"%1、%2、%3"_s.arg(pressureScale, timeScale, lines));
    for (auto* button : {m_ui->upButton, m_ui->downButton})
        setAccessibleDescriptionIfChanged(*button, pressureScale);
    for (auto* button : {m_ui->leftButton, m_ui->rightButton})
        setAccessibleDescriptionIfChanged(*button, timeScale);
    setNameFromTemplate(*m_ui->targetPressureImage, target);
    setNameFromTemplate(*m_ui->maxPressureImage, maximum);
    announceValue(*m_ui->gaugeView, static_cast<double>(m_viewModel.currentPressure.value()));
}

void VisualFeedbackViewController::viewWillAppear()
{
    m_ui->graphView->setUp(*m_ui->maxPressureImage, *m_ui->targetPressureImage);
    renderFrame();
    placeGaugeTags();
}

void VisualFeedbackViewController::bindViews()
{
    auto const bind
        = [this](auto& target, auto& source) { m_subscriptions += target.bindTo(source); };
    for (auto* view : std::initializer_list<PressureView*> {m_ui->gaugeView, m_ui->graphView}) {
        bind(view->upperBoundPressure, m_viewModel.upperBoundPressure);
        bind(view->currentPressure, m_viewModel.currentPressure);
        bind(view->maxPressure, m_viewModel.maxPressure);
        bind(view->targetPressure, m_viewModel.targetPressure);
        bind(view->targetColor, m_viewModel.model.targetColor);
    }
    bind(m_ui->graphView->timeWindow, m_viewModel.timeWindow);
}

void VisualFeedbackViewController::observeChanges()
{
    auto const onChange = [this](auto& source, auto reaction) {
        m_subscriptions += source.observeChanges(reaction);
    };
    m_subscriptions += m_viewModel.model.targetImage.observe(
        [this](Picture const& image) { m_ui->targetPressureImage->setPicture(image); });
    // The end of a session stops the blinking without a further reading.
    onChange(m_viewModel.isMeasuring, [this](bool) { redraw(); });
    m_subscriptions += m_viewModel.upperBoundPressure.observe([this](float upperBound) {
        redraw();
        m_gaugeLabels = makeLabels(
            *m_ui->zeroLabel, upperBound, {0.0, -designFrame(*m_ui->gaugeView).height()});
        placeGaugeTags();
        m_ui->graphView->plotter()->setUpperBoundPressure(upperBound);
    });
    m_subscriptions += m_viewModel.timeWindow.observe([this](float timeWindow) {
        redraw();
        m_graphLabels = makeLabels(
            *m_ui->zeroTimeLabel, timeWindow, {designFrame(*m_ui->graphView).width(), 0.0});
        m_ui->graphView->plotter()->setTimeWindow(static_cast<std::int64_t>(timeWindow));
    });
    onChange(m_viewModel.currentPressure, [this](float pressure) {
        redraw();
        m_ui->graphView->plotter()->addPressurePoint(pressure);
    });
    for (auto* pressure : {&m_viewModel.maxPressure, &m_viewModel.targetPressure}) {
        onChange(*pressure, [this](float) {
            redraw();
            placeGaugeTags();
        });
    }
    onChange(m_viewModel.shouldReset, [this](bool shouldReset) {
        if (!shouldReset)
            return;
        m_ui->graphView->plotter()->reset();
        for (float const pressure : m_viewModel.pointsAfterReset())
            m_ui->graphView->plotter()->addPressurePoint(pressure);
        redraw();
    });
}

void VisualFeedbackViewController::attachCommands()
{
    runOnClick(*m_ui->upButton, m_viewModel.cocoaActionIncUpperBoundPressure, *this);
    runOnClick(*m_ui->downButton, m_viewModel.cocoaActionDecUpperBoundPressure, *this);
    runOnClick(*m_ui->rightButton, m_viewModel.cocoaActionIncTimeWindow, *this);
    runOnClick(*m_ui->leftButton, m_viewModel.cocoaActionDecTimeWindow, *this);
    stepOnKeys(*m_ui->upButton, Qt::Key_Up, *m_ui->downButton, Qt::Key_Down);
    stepOnKeys(*m_ui->rightButton, Qt::Key_Right, *m_ui->leftButton, Qt::Key_Left);
}

// The tag of the higher line stands on it, the other hangs from its own: neither hides the other.
void VisualFeedbackViewController::placeGaugeTags()
{
    auto const target = m_viewModel.targetPressure.value();
    auto const maximum = m_viewModel.maxPressure.value();
    auto const place = [this](QLabel& tag, float pressure, bool isHigher) {
        auto const height = m_ui->gaugeView->lineHeight(pressure);
        tag.setVisible(height.has_value());
        auto frame = designFrame(tag);
        auto const line = designFrame(*m_ui->gaugeView).bottom() - height.value_or(0.0);
        frame.moveTop(isHigher ? line + 2.0 - frame.height() : line - 2.0);
        setDesignFrame(tag, frame);
    };
    place(*m_ui->gaugeTargetTag, target, target > maximum);
    place(*m_ui->gaugeMaxTag, maximum, target <= maximum);
}

VisualFeedbackViewController::Labels VisualFeedbackViewController::makeLabels(
    QLabel const& zeroLabel, float end, QPointF distance)
{
    Labels labels;
    int const last = static_cast<int>(end);
    for (int value = 5; value <= last; value += 5) {
        auto& label = *labels.emplace_back(std::make_unique<QLabel>(&m_view));
        for (auto const* property : {"role", "accessibleNameTemplate"})
            label.setProperty(property, zeroLabel.property(property));
        label.setFont(zeroLabel.font());
        label.setAlignment(Qt::AlignCenter);
        setLabelText(label, QString::number(value));
        setDesignFrame(label, designFrame(zeroLabel).translated(distance * value / last));
        label.show();
    }
    return labels;
}

} // namespace tensio
