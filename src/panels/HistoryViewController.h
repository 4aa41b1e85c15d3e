#pragma once

#include "panels/HistoryViewModel.h"
#include "panels/StatusLine.h"

#include <QObject>

#include <memory>
#include <vector>

class QMenu;
class QWidget;

namespace Ui {
class History;
}

namespace tensio {

class HistorySlice;

// The history strip: a tile for each measurement of the page, paging, and the average of the
// selected ones; beside them the status line.
class HistoryViewController : public QObject {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HistoryViewController)

public:
    HistoryViewController(
        TensioManager& tensioManager, StatusViewModel const& status, QWidget& view);
    ~HistoryViewController() override;

    // To the first and the last measurement, with their keys.
    void addCommands(QMenu& menu);

Q_SIGNALS:
    void willPrintCurve(std::shared_ptr<Measurement> const& measurement);

private:
    void viewDidLoad(StatusViewModel const& status);
    // -1: the beginning of the list; +1: its end.
    void showEnd(int direction);
    void rebuild(Measurements const& measurements);
    void addTile(std::shared_ptr<Measurement> const& measurement);
    void focusTile(int index);
    // Turns the page when the step leaves it.
    void moveFocus(int step);
    // -1 when no tile has the focus in its window.
    int focusedIndex() const;

    TensioManager& m_tensioManager;
    QWidget& m_view;
    std::unique_ptr<Ui::History> m_ui;
    HistoryViewModel m_viewModel;
    std::vector<std::unique_ptr<HistorySlice>> m_historySliceViews;
    Subscriptions m_statusLine;
    Subscriptions m_subscriptions;
};

} // namespace tensio
