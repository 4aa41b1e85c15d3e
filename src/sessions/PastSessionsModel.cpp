#include "sessions/PastSessionsModel.h"

#include "core/DateText.h"
#include "core/NumberText.h"

#include <array>
#include <utility>

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
        return QStringLiteral("%1回").arg(session.count);
    case PastSessionsModel::Best:
        return QString::fromStdString(formatFixed(session.best, 1));
    case PastSessionsModel::Saved:
        return session.isSaved ? QStringLiteral("保存済み") : QStringLiteral("未保存");
    case PastSessionsModel::Simulated:
        return session.isSimulated ? QStringLiteral("模擬装置") : QString();
    default:
        return {};
    }
}

QVariant alignment(int column)
{
    bool const isNumber = column == PastSessionsModel::Count || column == PastSessionsModel::Best;
    return QVariant::fromValue((isNumber ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
}

} // namespace

void PastSessionsModel::show(std::vector<SessionSummary> sessions)
{
    beginResetModel();
    m_sessions = std::move(sessions);
    endResetModel();
}

SessionSummary const& PastSessionsModel::session(QModelIndex const& index) const
{
    return m_sessions.at(static_cast<std::size_t>(index.row()));
}

int PastSessionsModel::rowCount(QModelIndex const& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_sessions.size());
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
        return text(session(index), index.column());
    return role == Qt::TextAlignmentRole ? alignment(index.column()) : QVariant();
}

QVariant PastSessionsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    static std::array<QString, ColumnCount> const titles {QStringLiteral("日時"),
        QStringLiteral("氏名"), QStringLiteral("測定"), QStringLiteral("最大圧（kPa）"),
        QStringLiteral("CSV"), QStringLiteral("備考")};
    if (orientation != Qt::Horizontal || section < 0 || section >= ColumnCount)
        return {};
    if (role == Qt::DisplayRole)
        return titles.at(static_cast<std::size_t>(section));
    return role == Qt::TextAlignmentRole ? alignment(section) : QVariant();
}

} // namespace tensio
