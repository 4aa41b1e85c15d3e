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

class SessionArchive;

// Non-modal notices about stored sessions: that the last one was not saved, and problems of the
// store, which screen readers speak.
class SessionNotices : public QObject {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(SessionNotices)

public:
    SessionNotices(SessionArchive& archive, QWidget& unsavedView, QWidget& problemView);
    ~SessionNotices() override;

Q_SIGNALS:
    // The unsaved session is offered no longer, and its line had the focus.
    void willMoveFocus();

private:
    void showUnsaved(std::optional<SessionSummary> const& session);
    void openUnsaved();
    // Of the session that was to be opened, until the next; none if empty.
    void showDamage(QString const& damage);
    void showProblem(QString const& problem);

    SessionArchive& m_archive;
    QWidget& m_unsavedView;
    QWidget& m_problemView;
    std::unique_ptr<Ui::UnsavedSession> m_unsaved;
    std::unique_ptr<Ui::StoreProblem> m_problem;
    bool m_isDamageShown = false;
    Subscriptions m_subscriptions;
};

} // namespace tensio
