#pragma once

#include "platform/SessionStore.h"
#include "reactive/Subscription.h"
#include "sessions/SessionServices.h"

#include <QObject>

#include <utility>

class QMenu;
class QWidget;

namespace tensio {

class SessionArchive;

// The commands of the file menu that concern stored sessions: the list, backup and the way back.
class SessionCommands : public QObject {
    Q_OBJECT

public:
    SessionCommands(SessionArchive& archive, SessionServices services, QWidget& window)
        : m_archive(archive)
        , m_services(std::move(services))
        , m_window(window)
    {
    }

    void addTo(QMenu& menu);

private:
    void openList();
    void backUp();
    void restore();
    // Says at the end that it is done, or why not; nothing when the user has cancelled it.
    void runTransfer(std::unique_ptr<SessionTransfer> transfer, QString const& text,
        std::function<QString(int count)> const& done);

    SessionArchive& m_archive;
    SessionServices m_services;
    QWidget& m_window;
    Subscriptions m_subscriptions;
};

} // namespace tensio
