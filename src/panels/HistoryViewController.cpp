#include "panels/HistoryViewController.h"

#include "core/NumberText.h"
#include "core/TensioManager.h"
#include "panels/HistorySlice.h"
#include "toolkit/Accessible.h"
#include "toolkit/Buttons.h"
#include "ui_History.h"

#include <QMenu>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tensio {

HistoryViewController::HistoryViewController(
    TensioManager& tensioManager, StatusViewModel const& status, QWidget& view)
    : m_tensioManager(tensioManager)
    , m_view(view)
    , m_ui(std::make_unique<Ui::History>())
    , m_viewModel(tensioManager)
{
    m_ui->setupUi(&m_view);
    viewDidLoad(status);
}

HistoryViewController::~HistoryViewController() = default;

void HistoryViewController::viewDidLoad(StatusViewModel const& status)
{
    m_subscriptions += m_viewModel.measurements.observeChanges(
        [this](Measurements const& page) { rebuild(page); });
    runOnClick(*m_ui->backButton, m_viewModel.cocoaActionDecSliceStartIndex, *this);
    runOnClick(*m_ui->forwardButton, m_viewModel.cocoaActionIncSliceStartIndex, *this);
    m_statusLine = showStatusLine(status, *m_ui->hintLabel, *m_ui->countLabel, *m_ui->savedButton);
    setNameFromTemplate(*m_ui->averageLabel, m_ui->averageLabel->text());
    m_subscriptions += m_viewModel.selectedAverage.observeChanges(
        [this](float average) { setLabelText(*m_ui->averageLabel, pressureText(average)); });
}

void HistoryViewController::addCommands(QMenu& menu)
{
    menu.addAction(u"最初の測定へ(&B)"_s, Qt::Key_Home, this, [this] { showEnd(-1); });
    menu.addAction(u"最後の測定へ(&E)"_s, Qt::Key_End, this, [this] { showEnd(+1); });
}

void HistoryViewController::showEnd(int direction)
{
    auto const& list = m_tensioManager.measurementList;
    auto const last = std::ssize(list.measurements()) - MeasurementList::ITEMS;
    auto const start = direction < 0 ? 0 : last;
    m_tensioManager.changeSliceStartingIndex.apply(static_cast<int>(start - list.startingIndex()));
    if (focusedIndex() >= 0)
        focusTile(direction < 0 ? 0 : static_cast<int>(m_historySliceViews.size()) - 1);
}

void HistoryViewController::rebuild(Measurements const& measurements)
{
    // The focus stays with its measurement, or moves to the end of the page when that has left it,
    // or out of an empty page.
    int const focused = focusedIndex();
    std::shared_ptr<Measurement> const measurement = focused < 0
        ? nullptr
        : m_historySliceViews[static_cast<std::size_t>(focused)]->measurement();
    m_historySliceViews.clear();
    for (auto const& shown : measurements)
        addTile(shown);
    if (!measurement)
        return;
    if (measurements.empty()) {
        m_ui->backButton->setFocus();
        return;
    }
    auto const same = std::ranges::find(measurements, measurement);
    int const last = static_cast<int>(measurements.size()) - 1;
    focusTile(same != measurements.end() ? static_cast<int>(same - measurements.begin())
                                         : std::min(focused, last));
}

void HistoryViewController::addTile(std::shared_ptr<Measurement> const& measurement)
{
    auto* const previous = m_historySliceViews.empty() ? static_cast<QWidget*>(m_ui->backButton)
                                                       : m_historySliceViews.back().get();
    auto const index = static_cast<int>(m_historySliceViews.size());
    auto& tile = *m_historySliceViews.emplace_back(
        std::make_unique<HistorySlice>(m_tensioManager, measurement, index, m_view));
    // Queued: turning the page deletes the tile that sent the signal.
    connect(&tile, &HistorySlice::willMoveFocus, this, &HistoryViewController::moveFocus,
        Qt::QueuedConnection);
    connect(&tile, &HistorySlice::willPrintCurve, this,
        [this, measurement] { Q_EMIT willPrintCurve(measurement); });
    tile.show();
    QWidget::setTabOrder(previous, &tile);
}

void HistoryViewController::focusTile(int index)
{
    m_historySliceViews[static_cast<std::size_t>(index)]->setFocus();
}

void HistoryViewController::moveFocus(int step)
{
    auto const isOnPage = [this](int index) {
        return index >= 0 && index < static_cast<int>(m_historySliceViews.size());
    };
    if (!isOnPage(focusedIndex()))
        return;
    if (!isOnPage(focusedIndex() + step))
        (step > 0 ? m_viewModel.cocoaActionIncSliceStartIndex
                  : m_viewModel.cocoaActionDecSliceStartIndex)
            .execute();
    if (int const next = focusedIndex() + step; isOnPage(next))
        focusTile(next);
}

int HistoryViewController::focusedIndex() const
{
    auto const tile = std::ranges::find(m_historySliceViews, m_view.window()->focusWidget(),
        [](auto const& view) { return view.get(); });
    return tile == m_historySliceViews.end() ? -1
                                             : static_cast<int>(tile - m_historySliceViews.begin());
}

} // namespace tensio
