#pragma once

#include "reactive/Subscription.h"

#include <QObject>

class QMenu;
class QWidget;

namespace tensio {

class SessionArchive;

// The commands of the file menu that concern stored sessions.
class SessionCommands : public QObject {
    Q_OBJECT

public:
    // Nothing is owned; both must outlive the commands.
    SessionCommands(SessionArchive& archive, QWidget& window)
        : m_archive(archive)
        , m_window(window)
    {
    }

    void addTo(QMenu& menu);

private:
    SessionArchive& m_archive;
    QWidget& m_window;
    Subscriptions m_subscriptions;
};

} // namespace tensio
