#pragma once

#include "platform/SessionStore.h"
#include "reactive/Subscription.h"

#include <QObject>

#include <memory>

class QWidget;

namespace Ui {
class StoreProblem;
class UnsavedSession;
} // namespace Ui

namespace tensio {

class SessionRecorder;
class TensioManager;

// Non-modal notices about stored sessions: after the start, that the last session was not saved,
// until a measurement starts, a session is opened or that one is deleted; and problems of the
// store, which screen readers speak.
class SessionNotices : public QObject {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(SessionNotices)

public:
    // Nothing is owned; all must outlive the notices.
    SessionNotices(TensioManager& tensioManager, SessionRecorder& recorder, SessionStore& store,
        QWidget& unsavedView, QWidget& problemView);
    ~SessionNotices() override;

    // After sessions have been removed from the store.
    void refresh();

private:
    void showUnsaved(std::optional<SessionSummary> const& session);
    void openUnsaved();
    void showProblem(QString const& problem);

    SessionRecorder& m_recorder;
    SessionStore& m_store;
    QWidget& m_unsavedView;
    QWidget& m_problemView;
    std::unique_ptr<Ui::UnsavedSession> m_unsaved;
    std::unique_ptr<Ui::StoreProblem> m_problem;
    SessionId m_unsavedId = 0;
    Subscriptions m_subscriptions;
};

} // namespace tensio
