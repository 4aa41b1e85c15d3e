#include "panels/StatusViewModel.h"

#include "core/TensioManager.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tensio {

namespace {

void setIfChanged(MutableProperty<std::string>& property, std::string value)
{
    if (property.value() != value)
        property.setValue(std::move(value));
}

} // namespace

StatusViewModel::StatusViewModel(TensioManager const& tensioManager)
    : m_tensioManager(tensioManager)
{
    m_subscriptions += savedPath.bindTo(tensioManager.savedPath());
    m_subscriptions += tensioManager.connectAction.observe([this](auto const& event) {
        if (std::holds_alternative<ValueEvent<Nothing>>(event))
            m_portState = State::Waiting;
        else if (std::holds_alternative<FailedEvent<ErrorRef>>(event))
            m_portState = State::NotConnected;
        update();
    });
    m_subscriptions += tensioManager.isMeasuring.observeChanges([this](bool) {
        m_portState = State::Connecting;
        update();
    });
    m_subscriptions += tensioManager.isRecording.observeChanges([this](bool) { update(); });
    m_subscriptions += tensioManager.sliceOfMeasurements.observeChanges(
        [this](Measurements const&) { update(); });
    m_subscriptions += tensioManager.measurementList.selectedAverage.observeChanges(
        [this](float) { update(); });
    update();
}

void StatusViewModel::update()
{
    auto const now = currentState();
    // In the order of State.
    constexpr std::array names {"待機中", "接続中…", "未接続", "測定待ち", "記録中"};
    setIfChanged(state, names.at(static_cast<std::size_t>(now)));
    setIfChanged(hint, currentHint(now));
    setIfChanged(count, currentCount(now));
}

StatusViewModel::State StatusViewModel::currentState() const
{
    if (!m_tensioManager.isMeasuring.value())
        return State::Idle;
    if (m_tensioManager.isRecording.value())
        return State::Recording;
    return m_portState;
}

std::string StatusViewModel::currentHint(State now) const
{
    auto const& measurements = m_tensioManager.measurementList.measurements();
    if (now == State::Connecting)
        return "測定器に接続しています…";
    if (now == State::NotConnected)
        return "測定器に接続できませんでした";
    if (now == State::Idle && measurements.empty())
        return "「開始」を押すと測定を始められます";
    if (now == State::Idle)
        return m_tensioManager.measurementList.counted().size() < MeasurementList::maxSelected
            ? "履歴の測定をクリックすると、3つまで選べます"
            : "3つ選びました。保存・印刷できます";
    if (measurements.size() >= MeasurementList::MEASUREMENTS_MAX_COUNT)
        return "99回に達しました。これ以降は記録されません";
    if (now == State::Recording)
        return "値が途切れると、1回分として記録されます";
    return measurements.empty() ? "測定器から値が届くのを待っています"
                                : "「終了」のあと、測定を3つまで選べます";
}

std::string StatusViewModel::currentCount(State now) const
{
    auto const& list = m_tensioManager.measurementList;
    auto const total = std::ssize(list.measurements());
    if (total == 0)
        return {};
    auto const first = list.startingIndex() + 1;
    auto const last = std::min(first + MeasurementList::ITEMS - 1, total);
    auto const range = first == last ? std::to_string(first)
                                     : std::to_string(first) + "〜" + std::to_string(last);
    auto text = "全" + std::to_string(total) + "回中 " + range;
    if (now == State::Idle)
        text += "　選択 " + std::to_string(list.counted().size()) + "/"
            + std::to_string(MeasurementList::maxSelected);
    return text;
}

} // namespace tensio
