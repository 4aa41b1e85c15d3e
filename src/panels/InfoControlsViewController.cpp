#include "panels/InfoControlsViewController.h"

#include "core/NumberText.h"
#include "core/TensioManager.h"
#include "panels/UserInfoViewController.h"
#include "toolkit/Accessible.h"
#include "toolkit/Buttons.h"
#include "ui_InfoControls.h"

#include <QMenu>

#include <array>

using namespace Qt::StringLiterals;

namespace tensio {

namespace {
constexpr std::array percentages {100, 90, 80, 70, 60, 50, 40, 30, 20, 10};
}

InfoControlsViewController::InfoControlsViewController(TensioManager& tensioManager,
    StatusViewModel const& status, RunLoop& runLoop, Alerts& alerts, QWidget& view)
    : m_tensioManager(tensioManager)
    , m_status(status)
    , m_alerts(alerts)
    , m_view(view)
    , m_ui(std::make_unique<Ui::InfoControls>())
    , m_viewModel(tensioManager, runLoop)
    , m_cocoaActionStart(Action<Nothing>([this](Nothing) { start(); }), Nothing {})
{
    m_ui->setupUi(&m_view);
    viewDidLoad();
}

InfoControlsViewController::~InfoControlsViewController() = default;

void InfoControlsViewController::addCommands(QMenu& menu)
{
    menu.addAction(makeMenuCommand(*m_ui->startButton, u"測定を開始(&S)…"_s, Qt::Key_F5));
    menu.addAction(
        makeMenuCommand(*m_ui->finishButton, u"測定を終了(&E)"_s, Qt::SHIFT | Qt::Key_F5));
}

void InfoControlsViewController::viewDidLoad()
{
    showReadOuts();
    runOnClick(*m_ui->targetPressureUpButton, m_viewModel.cocoaActionIncTargetPressure, *this);
    runOnClick(*m_ui->targetPressureDownButton, m_viewModel.cocoaActionDecTargetPressure, *this);
    stepOnKeys(
        *m_ui->targetPressureUpButton, Qt::Key_Up, *m_ui->targetPressureDownButton, Qt::Key_Down);
    runOnClick(*m_ui->finishButton, m_viewModel.cocoaActionDisconnect, *this);
    m_subscriptions += m_viewModel.isMeasuring.observe(
        [this](bool isMeasuring) { showMeasuringState(isMeasuring); });
    m_subscriptions += m_tensioManager.connectAction.observe(
        [this](auto const& event) { connectionEvent(event); });
    runOnClick(*m_ui->startButton, m_cocoaActionStart, *this);
    m_ui->segueButton->hide();
    connect(m_ui->segueButton, &QAbstractButton::clicked, this,
        &InfoControlsViewController::openUserInfo);
    fillPercentPopup();
    focusStart();
}

void InfoControlsViewController::focusStart()
{
    m_ui->startButton->setFocus();
}

void InfoControlsViewController::showReadOuts()
{
    auto const show = [this](MutableProperty<float>& value, QLabel* label) {
        m_subscriptions += value.observe(
            [label](float pressure) { setLabelText(*label, pressureText(pressure)); });
    };
    show(m_viewModel.targetPressure, m_ui->targetPressureLabel);
    show(m_viewModel.currentPressure, m_ui->currentPressureLabel);
    show(m_viewModel.maxPressure, m_ui->maxPressureLabel);
    m_subscriptions += m_viewModel.targetBasis.observe(
        [this](std::string const& basis) { setLabelText(*m_ui->basisLabel, basis); });
    m_subscriptions += m_status.state.observe(
        [this](std::string const& state) { setLabelText(*m_ui->statusLabel, state); });
}

void InfoControlsViewController::showMeasuringState(bool isMeasuring)
{
    auto const* const focused = m_view.window()->focusWidget();
    bool const hasEnded = !isMeasuring && m_ui->finishButton->isEnabled();
    // From Start and back, not to Finish: one more Space would end the session.
    if (isMeasuring && focused == m_ui->startButton)
        m_ui->percentPopup->setFocus();
    enableButtonPair(*m_ui->startButton, !isMeasuring, *m_ui->finishButton, isMeasuring);
    if (hasEnded && focused == m_ui->percentPopup)
        m_ui->startButton->setFocus();
    m_ui->statusImageView->setPicture(Picture::named(isMeasuring ? u"ind_on"_s : u"ind_off"_s));
    setNameFromTemplate(*m_ui->statusImageView, isMeasuring ? u"点灯"_s : u"消灯"_s);
    m_ui->startButton->setToolTip(
        isMeasuring ? u"測定中です。先に「終了」を押してください"_s : QString());
    m_ui->finishButton->setToolTip(
        isMeasuring ? QString() : u"測定していません。「開始」で始めます"_s);
}

void InfoControlsViewController::fillPercentPopup()
{
    for (int const percentage : percentages)
        m_ui->percentPopup->addItem(u"%1%"_s.arg(percentage), percentage);
    m_subscriptions += m_tensioManager.targetPressurePercent.observe([this](float percent) {
        m_ui->percentPopup->setTitle(u"%1%"_s.arg(qRound(percent * 100.0f)));
    });
    connect(m_ui->percentPopup, &PopUpButton::itemSelected, this,
        &InfoControlsViewController::percentSelected);
}

void InfoControlsViewController::percentSelected(int percentage)
{
    m_tensioManager.changeTargetPressurePercentAction.apply(
        static_cast<float>(percentage) / 100.0f);
}

void InfoControlsViewController::start()
{
    bool const mayDiscard = !m_viewModel.hasData.value()
        || m_alerts.runModal(AlertStyle::Warning,
               "前回の舌圧測定データが削除されます。\nよろしいでしょうか？", {"OK", "Cancel"})
            == 0;
    if (mayDiscard)
        m_ui->segueButton->click();
}

void InfoControlsViewController::openUserInfo()
{
    m_userInfo = std::make_unique<UserInfoViewController>(m_tensioManager, m_view);
    m_userInfo->show();
}

void InfoControlsViewController::connectionEvent(Event<Nothing, ErrorRef> const& event)
{
    if (auto const* failure = std::get_if<FailedEvent<ErrorRef>>(&event)) {
        m_alerts.runModal(AlertStyle::Critical, failure->error->localizedDescription(), {"OK"});
        m_tensioManager.isMeasuring.setValue(false);
    } else if (std::holds_alternative<InterruptedEvent>(event)) {
        m_alerts.runModal(AlertStyle::Critical, "切断されました。", {"OK"});
    }
}

} // namespace tensio
