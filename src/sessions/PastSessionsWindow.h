#pragma once

#include "sessions/PastSessionsModel.h"

#include <QDialog>

#include <memory>

namespace Ui {
class PastSessions;
}

namespace tensio {

class SessionArchive;

// The list of the stored sessions: searched by name, one put into the window, one or all deleted.
class PastSessionsWindow : public QDialog {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(PastSessionsWindow)

public:
    // The archive must outlive the window.
    PastSessionsWindow(SessionArchive& archive, QWidget& parent);
    ~PastSessionsWindow() override;

private:
    void setUpList();
    void search();
    void showSelection();
    void openSelected();
    void removeSelected();
    void removeAll();
    // Asks first; the safe answer is the default.
    void ask(QString const& question, std::function<StoreProblem()> const& remove);
    void warn(QString const& message);

    SessionArchive& m_archive;
    std::unique_ptr<Ui::PastSessions> m_ui;
    PastSessionsModel m_model;
};

} // namespace tensio
