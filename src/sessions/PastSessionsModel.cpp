#include "sessions/PastSessionsModel.h"

#include "core/DateText.h"
#include "core/NumberText.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace tensio {

namespace {

QString text(SessionSummary const& session, int column)
{
    switch (column) {
    case PastSessionsModel::Start:
        return QString::fromStdString(dateAndMinute(session.start));
    case PastSessionsModel::Name:
        return QString::fromStdString(session.name);
    case PastSessionsModel::Count:
        return u"%1回"_s.arg(session.count);
    case PastSessionsModel::Best:
        return QString::fromStdString(formatFixed(session.best, 1));
    case PastSessionsModel::Saved:
        return session.isSaved ? u"保存済み"_s : u"未保存"_s;
    case PastSessionsModel::Simulated:
        return session.isSimulated ? u"模擬装置"_s : QString();
    default:
        return {};
    }
}

QString keyOf(QString const& name)
{
    auto key = name.normalized(QString::NormalizationForm_KC).toCaseFolded();
    key.removeIf([](QChar character) { return character.isSpace(); });
    return key;
}

QVariant alignment(int column)
{
    bool const isNumber = column == PastSessionsModel::Count || column == PastSessionsModel::Best;
    return QVariant::fromValue((isNumber ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
}

} // namespace

void PastSessionsModel::clear()
{
    beginResetModel();
    m_rows.clear();
    m_shown.clear();
    endResetModel();
}

void PastSessionsModel::append(std::vector<SessionSummary> const& sessions)
{
    auto const first = m_rows.size();
    for (auto const& session : sessions)
        m_rows.push_back({session, keyOf(QString::fromStdString(session.name))});
    auto const added = found(first);
    if (added.empty())
        return;
    beginInsertRows({}, rowCount(), rowCount() + static_cast<int>(added.size()) - 1);
    m_shown.insert(m_shown.end(), added.begin(), added.end());
    endInsertRows();
}

void PastSessionsModel::markSaved(SessionId session)
{
    auto const row
        = std::ranges::find(m_rows, session, [](Row const& each) { return each.session.id; });
    if (row != m_rows.end())
        row->session.isSaved = true;
    if (!m_shown.empty())
        Q_EMIT dataChanged(index(0, Saved), index(rowCount() - 1, Saved));
}

void PastSessionsModel::filter(QString const& namePart, Period period)
{
    beginResetModel();
    m_filter = keyOf(namePart);
    m_period = period;
    m_shown = found(0);
    endResetModel();
}

std::vector<std::size_t> PastSessionsModel::found(std::size_t first) const
{
    std::vector<std::size_t> places;
    for (auto place = first; place < m_rows.size(); ++place) {
        auto const& row = m_rows[place];
        bool const isInPeriod
            = row.session.start >= m_period.first && row.session.start < m_period.end;
        if (isInPeriod && row.key.contains(m_filter))
            places.push_back(place);
    }
    return places;
}

SessionSummary const& PastSessionsModel::session(int row) const
{
    return m_rows[m_shown.at(static_cast<std::size_t>(row))].session;
}

int PastSessionsModel::rowCount(QModelIndex const& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_shown.size());
}

int PastSessionsModel::columnCount(QModelIndex const& /*parent*/) const
{
    return ColumnCount;
}

QVariant PastSessionsModel::data(QModelIndex const& index, int role) const
{
    // A view asks for its current row even when there is none.
    if (!index.isValid())
        return {};
    if (role == Qt::DisplayRole)
        return text(session(index.row()), index.column());
    return role == Qt::TextAlignmentRole ? alignment(index.column()) : QVariant();
}

QVariant PastSessionsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    static std::array<QString, ColumnCount> const titles {
        u"日時"_s, u"氏名"_s, u"測定"_s, u"最大圧（kPa）"_s, u"CSV"_s, u"備考"_s};
    if (orientation != Qt::Horizontal || section < 0 || section >= ColumnCount)
        return {};
    if (role == Qt::DisplayRole)
        return titles.at(static_cast<std::size_t>(section));
    return role == Qt::TextAlignmentRole ? alignment(section) : QVariant();
}

} // namespace tensio
