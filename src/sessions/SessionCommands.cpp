#include "sessions/SessionCommands.h"

#include "core/SessionArchive.h"
#include "platform/Saving.h"
#include "sessions/Dialogs.h"
#include "sessions/PastSessionsWindow.h"
#include "sessions/TransferDialog.h"
#include "toolkit/OpenDialog.h"

#include <QMenu>

using namespace Qt::StringLiterals;

namespace tensio {

namespace {

QString textOf(TransferState state)
{
    switch (state) {
    case TransferState::Running:
    case TransferState::Done:
        break;
    case TransferState::DoneInPart:
        return u"\n壊れていて読み取れない測定は含まれません。管理者に知らせてください。"_s;
    case TransferState::NoSpace:
        return u"空き容量が足りません。何も変更していません。"_s;
    case TransferState::NotWritable:
        return u"書き込めませんでした。何も変更していません。"_s;
    case TransferState::Unreadable:
        return u"tensioのバックアップではないか、壊れています。何も変更していません。"_s;
    case TransferState::Newer:
        return u"新しいバージョンのtensioのバックアップです。新しいtensioで戻してください。"_s;
    }
    return {};
}

} // namespace

void SessionCommands::addTo(QMenu& menu)
{
    auto const add = [&](QString const& title, void (SessionCommands::*run)()) {
        auto* const command = menu.addAction(title, this, run);
        m_subscriptions += m_archive.canOpen.observe(
            [command](bool isPossible) { command->setEnabled(isPossible); });
        return command;
    };
    add(u"以前の測定を開く(&O)…"_s, &SessionCommands::openList)->setShortcut(QKeySequence::Open);
    add(u"バックアップ(&B)…"_s, &SessionCommands::backUp);
    add(u"バックアップから戻す(&R)…"_s, &SessionCommands::restore);
}

void SessionCommands::openList()
{
    openDialog(new PastSessionsWindow(m_archive, m_services, m_window));
}

void SessionCommands::backUp()
{
    // Of all sessions, whatever the window shows.
    bool const before = m_services.savePanel.setSimulated(false);
    auto const path = m_services.savePanel.runModal("db");
    m_services.savePanel.setSimulated(before);
    if (path)
        runTransfer(m_archive.backUp(*path), u"バックアップしています…"_s, [](int count) {
            return u"%1件の測定をバックアップしました。\n氏名と測定値が含まれます。"_s.arg(count);
        });
}

void SessionCommands::restore()
{
    choose(m_window, u"バックアップから戻す"_s, QFileDialog::ExistingFile, u"バックアップ (*.db)"_s,
        [this](QString const& path) {
            runTransfer(m_archive.restore(path.toStdString()), u"バックアップから戻しています…"_s,
                [](int count) {
                    return count > 0
                        ? u"%1件の測定を戻しました。"_s.arg(count)
                        : u"バックアップの測定はすべてすでにあるため、戻すものはありませんでした。"_s;
                });
        });
}

void SessionCommands::runTransfer(std::unique_ptr<SessionTransfer> transfer, QString const& text,
    std::function<QString(int count)> const& done)
{
    new TransferDialog(
        std::move(transfer), text,
        [this, done](TransferState state, int count) {
            bool const isDone = state == TransferState::Done;
            bool const isDoneInPart = state == TransferState::DoneInPart;
            if (state != TransferState::Running)
                tell(m_window, isDone ? QMessageBox::Information : QMessageBox::Critical,
                    (isDone || isDoneInPart ? done(count) : QString()) + textOf(state));
        },
        m_window);
}

} // namespace tensio
