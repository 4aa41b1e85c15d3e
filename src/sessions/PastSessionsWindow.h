#pragma once

#include "sessions/PastSessionsModel.h"
#include "sessions/SessionServices.h"

#include <QDialog>

#include <memory>
#include <optional>

namespace Ui {
class PastSessions;
}

namespace tensio {

class SessionArchive;

// The list of the stored sessions: searched by name and period, one put into the window, some
// shown as a course, saved or deleted.
// It is loaded in steps that are short enough not to hold up the display.
class PastSessionsWindow : public QDialog {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(PastSessionsWindow)

public:
    PastSessionsWindow(SessionArchive& archive, SessionServices services, QWidget& parent);
    ~PastSessionsWindow() override;

private:
    void setUpList();
    void setUpSearch();
    void connectCommands();
    void load();
    void loadPage();
    QDate today() const;
    Period period() const;
    void search();
    void showState();
    std::vector<SessionSummary> selected() const;
    void selectSameName();
    void openSelected();
    // Both ask first.
    void removeSelected();
    void removeAll();
    void showRemoval(StoreProblem problem);

    SessionArchive& m_archive;
    SessionServices m_services;
    std::unique_ptr<Ui::PastSessions> m_ui;
    PastSessionsModel m_model;
    // The last session loaded, while there are more.
    std::optional<SessionSummary> m_last;
};

} // namespace tensio
