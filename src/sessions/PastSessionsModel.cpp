#include "sessions/PastSessionsModel.h"

#include "core/DateText.h"
#include "core/NumberText.h"

#include <algorithm>
#include <array>

namespace tensio {

namespace {

using Session = SessionSummary const&;

struct ColumnKind {
    char const* title;
    bool isNumber;
    std::string (*text)(Session);
};

constexpr std::array<ColumnKind, PastSessionsModel::ColumnCount> kinds {{
    {"日時", false, [](Session session) { return dateAndMinute(session.start); }},
    {"氏名", false, [](Session session) { return session.name; }},
    {"測定", true, [](Session session) { return std::to_string(session.count) + "回"; }},
    {"最大圧（kPa）", true, [](Session session) { return pressureText(session.best); }},
    {"CSV", false,
        [](Session session) { return std::string(session.isSaved ? "保存済み" : "未保存"); }},
    {"備考", false,
        [](Session session) { return std::string(session.isSimulated ? "模擬装置" : ""); }},
}};

QString keyOf(QString const& name)
{
    auto key = name.normalized(QString::NormalizationForm_KC).toCaseFolded();
    key.removeIf([](QChar character) { return character.isSpace(); });
    return key;
}

QVariant alignment(ColumnKind const& kind)
{
    auto const side = kind.isNumber ? Qt::AlignRight : Qt::AlignLeft;
    return QVariant::fromValue(side | Qt::AlignVCenter);
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
    auto const& kind = kinds.at(static_cast<std::size_t>(index.column()));
    if (role == Qt::DisplayRole)
        return QString::fromStdString(kind.text(session(index.row())));
    return role == Qt::TextAlignmentRole ? alignment(kind) : QVariant();
}

QVariant PastSessionsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= ColumnCount)
        return {};
    auto const& kind = kinds.at(static_cast<std::size_t>(section));
    if (role == Qt::DisplayRole)
        return QString::fromUtf8(kind.title);
    return role == Qt::TextAlignmentRole ? alignment(kind) : QVariant();
}

} // namespace tensio
