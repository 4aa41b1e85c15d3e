#include "sessions/SessionOutput.h"

#include "core/CsvBuilder.h"
#include "core/DateText.h"
#include "core/SavingMessages.h"
#include "core/SessionArchive.h"
#include "core/Utf16.h"
#include "platform/Saving.h"
#include "sessions/CsvExport.h"
#include "sessions/Dialogs.h"
#include "sessions/TransferDialog.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace tensio {

SessionOutput::SessionOutput(SessionArchive& archive, SessionServices services, QWidget& list)
    : m_archive(archive)
    , m_services(std::move(services))
    , m_list(list)
{
}

std::optional<Course> SessionOutput::course(Sessions const& sessions)
{
    if (auto const refusal = courseRefusal(sessions)) {
        tell(m_list, QMessageBox::Warning, QString::fromStdString(*refusal));
        return std::nullopt;
    }
    std::vector<StoredSession> stored;
    for (auto const& each : sessions) {
        if (auto session = m_archive.load(each.id, StoredPoints::LeftOut))
            stored.push_back(std::move(*session));
    }
    if (stored.empty()) {
        tell(m_list, QMessageBox::Warning, u"この測定は読み込めませんでした。"_s);
        return std::nullopt;
    }
    auto course = courseOf(std::move(stored));
    course.isComplete = course.isComplete && course.entries.size() == sessions.size();
    return course;
}

void SessionOutput::showCourse(Sessions const& sessions)
{
    if (auto const chosen = course(sessions))
        m_services.showCourse(*chosen, m_list);
}

void SessionOutput::saveCourse(Sessions const& sessions)
{
    auto const chosen = course(sessions);
    if (!chosen)
        return;
    auto& panel = m_services.savePanel;
    bool const before = panel.setSimulated(chosen->isSimulated);
    auto const path = panel.runModal("csv");
    panel.setSimulated(before);
    if (path && !m_services.fileWriter.writeAtomically(*path, encodeUtf16(csvOfCourse(*chosen))))
        tell(m_list, QMessageBox::Critical, QString::fromUtf8(saveFailedMessage));
}

void SessionOutput::saveEach(Sessions const& sessions)
{
    choose(m_list, u"CSVを保存するフォルダー"_s, QFileDialog::Directory, {},
        [this, sessions](QString const& folder) { saveInto(folder, sessions); });
}

void SessionOutput::saveInto(QString const& folder, Sessions const& sessions)
{
    m_isComplete = true;
    auto const written = [this](StoredSession const& session) {
        m_isComplete = m_isComplete && session.isComplete;
        m_archive.markSaved(session.summary.id);
        Q_EMIT saved(session.summary.id);
    };
    new TransferDialog(
        std::make_unique<CsvExport>(m_archive, m_services.fileWriter, folder, sessions, written),
        u"CSVを保存しています…"_s,
        [this, sessions](TransferState state, int count) {
            tellEnd(state, static_cast<std::size_t>(count), sessions);
        },
        m_list);
}

void SessionOutput::tellEnd(TransferState state, std::size_t count, Sessions const& sessions)
{
    auto text = u"%1件の測定のCSVを保存しました。"_s.arg(count);
    if (!m_isComplete)
        text += u'\n' + QString::fromUtf8(courseIncompleteMessage);
    if (state == TransferState::Running)
        text = u"キャンセルしました。"_s + (count > 0 ? u"\nそれまでに、"_s + text : u""_s);
    if (state == TransferState::Done || state == TransferState::Running) {
        tell(m_list, QMessageBox::Information, text);
        return;
    }
    auto const& failed = sessions.at(count);
    auto const what = QString::fromStdString(dateAndMinute(failed.start) + "　" + failed.name);
    auto const why = state == TransferState::Unreadable
        ? u"の記録は壊れていて、読み込めませんでした。"_s
        : u"のCSVを保存できませんでした。\n空き容量と書き込みの許可を確かめてください。"_s;
    tell(m_list, QMessageBox::Critical, what + why + u"\nその前の"_s + text);
}

} // namespace tensio
