#pragma once

#include "platform/SessionStore.h"
#include "reactive/Subscription.h"

#include <QObject>

class QMenu;
class QWidget;

namespace tensio {

class SavePanel;
class SessionArchive;

// The commands of the file menu that concern stored sessions: the list, backup and the way back.
class SessionCommands : public QObject {
    Q_OBJECT

public:
    // Nothing is owned; all must outlive the commands.
    SessionCommands(SessionArchive& archive, SavePanel& savePanel, QWidget& window)
        : m_archive(archive)
        , m_savePanel(savePanel)
        , m_window(window)
    {
    }

    void addTo(QMenu& menu);

private:
    void openList();
    void backUp();
    void chooseBackup();
    void restore(QString const& path);
    void tell(TransferState state, QString const& done);

    SessionArchive& m_archive;
    SavePanel& m_savePanel;
    QWidget& m_window;
    Subscriptions m_subscriptions;
};

} // namespace tensio
