#pragma once

#include "app/PastSessionsModel.h"

#include <QDialog>

#include <memory>

namespace Ui {
class PastSessions;
}

namespace tensio {

class SessionRecorder;

// The list of the stored sessions: searched by name, one put into the window, one or all deleted.
class PastSessionsWindow : public QDialog {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(PastSessionsWindow)

public:
    // The recorder and the store must outlive the window.
    PastSessionsWindow(SessionRecorder& recorder, SessionStore& store, QWidget& parent);
    ~PastSessionsWindow() override;

Q_SIGNALS:
    // One or all have been removed from the store.
    void sessionsRemoved();

private:
    void setUpList();
    void search();
    void showSelection();
    void openSelected();
    void removeSelected();
    void removeAll();
    // Asks first; the safe answer is the default.
    void ask(QString const& question, std::function<bool()> const& remove);
    void warn(QString const& message);

    SessionRecorder& m_recorder;
    SessionStore& m_store;
    std::unique_ptr<Ui::PastSessions> m_ui;
    PastSessionsModel m_model;
};

} // namespace tensio
