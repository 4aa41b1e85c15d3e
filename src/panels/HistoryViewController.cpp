#include "panels/HistoryViewController.h"

#include "core/NumberFormat.h"
#include "panels/HistorySlice.h"
#include "toolkit/ButtonCommand.h"
#include "ui_History.h"

namespace tensio {

HistoryViewController::HistoryViewController(TensioManager& tensioManager, QWidget& view)
    : m_tensioManager(tensioManager)
    , m_view(view)
    , m_ui(std::make_unique<Ui::History>())
    , m_viewModel(tensioManager)
{
    m_ui->setupUi(&m_view);
    m_subscriptions.push_back(m_viewModel.measurements.observeChanges(
        [this](Measurements const& page) { rebuild(page); }));
    runOnClick(*m_ui->backButton, m_viewModel.cocoaActionDecSliceStartIndex, *this);
    runOnClick(*m_ui->forwardButton, m_viewModel.cocoaActionIncSliceStartIndex, *this);
    m_subscriptions.push_back(m_viewModel.selectedAverage.observeChanges([this](float average) {
        m_ui->averageLabel->setText(QString::fromStdString(formatFixed(average, 1)));
    }));
}

HistoryViewController::~HistoryViewController() = default;

void HistoryViewController::rebuild(Measurements const& measurements)
{
    m_historySliceViews.clear();
    QWidget* previous = m_ui->backButton;
    for (auto const& measurement : measurements) {
        auto const index = static_cast<int>(m_historySliceViews.size());
        auto& tile = *m_historySliceViews.emplace_back(
            std::make_unique<HistorySlice>(m_tensioManager, measurement, index, m_view));
        tile.show();
        QWidget::setTabOrder(previous, &tile);
        previous = &tile;
    }
}

} // namespace tensio
