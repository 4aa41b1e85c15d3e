#pragma once

#include "platform/SessionStore.h"

#include <QAbstractTableModel>

namespace tensio {

// The sessions of the store as rows, newest first.
class PastSessionsModel : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { Start, Name, Count, Best, Saved, Simulated, ColumnCount };

    using QAbstractTableModel::QAbstractTableModel;

    void show(std::vector<SessionSummary> sessions);
    SessionSummary const& session(QModelIndex const& index) const;

    int rowCount(QModelIndex const& parent = {}) const override;
    int columnCount(QModelIndex const& parent = {}) const override;
    QVariant data(QModelIndex const& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::vector<SessionSummary> m_sessions;
};

} // namespace tensio
