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
    // Nothing is owned; all must outlive the commands.
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
    void chooseBackup();
    void restore(QString const& path);
    void tellEnd(TransferState state, QString const& done);

    SessionArchive& m_archive;
    SessionServices m_services;
    QWidget& m_window;
    Subscriptions m_subscriptions;
};

} // namespace tensio
