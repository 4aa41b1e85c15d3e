#include "sessions/SessionCommands.h"

#include "core/SessionArchive.h"
#include "sessions/PastSessionsWindow.h"

#include <QMenu>

namespace tensio {

void SessionCommands::addTo(QMenu& menu)
{
    auto* const open
        = menu.addAction(QStringLiteral("以前の測定を開く(&O)…"), QKeySequence::Open, this, [this] {
              auto* const window = new PastSessionsWindow(m_archive, m_window);
              window->setAttribute(Qt::WA_DeleteOnClose);
              window->open();
          });
    m_subscriptions.push_back(
        m_archive.canOpen.observe([open](bool isPossible) { open->setEnabled(isPossible); }));
}

} // namespace tensio
