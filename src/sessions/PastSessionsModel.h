#pragma once

#include "platform/SessionStore.h"

#include <QAbstractTableModel>

namespace tensio {

// From the first date to just before the end.
struct Period {
    Date first = Date::min();
    Date end = Date::max();
};

// The sessions of the store as rows, newest first: those of a period whose name contains a text.
class PastSessionsModel : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { Start, Name, Count, Best, Saved, Simulated, ColumnCount };

    using QAbstractTableModel::QAbstractTableModel;

    void clear();
    void append(std::vector<SessionSummary> const& sessions);
    void markSaved(SessionId session);
    // In names, ignores blanks, case, and the width of characters.
    void filter(QString const& namePart, Period period);

    // Also those that the filter hides.
    int total() const { return static_cast<int>(m_rows.size()); }
    // The row must exist.
    SessionSummary const& session(int row) const;

    int rowCount(QModelIndex const& parent = {}) const override;
    int columnCount(QModelIndex const& parent = {}) const override;
    QVariant data(QModelIndex const& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct Row {
        SessionSummary session;
        // The name as the filter compares it.
        QString key;
    };

    std::vector<std::size_t> found(std::size_t first) const;

    std::vector<Row> m_rows;
    // Places in m_rows.
    std::vector<std::size_t> m_shown;
    QString m_filter;
    Period m_period;
};

} // namespace tensio
