#include "sessions/CourseOutput.h"

#include "core/CsvBuilder.h"
#include "core/SavingMessages.h"
#include "core/SessionArchive.h"
#include "core/Utf16.h"
#include "platform/Saving.h"
#include "sessions/Dialogs.h"
#include "sessions/SessionServices.h"

using namespace Qt::StringLiterals;

namespace tensio {

namespace {

std::optional<Course> course(
    std::vector<SessionSummary> const& sessions, SessionArchive& archive, QWidget& window)
{
    if (auto const refusal = courseRefusal(sessions)) {
        tell(window, QMessageBox::Warning, QString::fromStdString(*refusal));
        return std::nullopt;
    }
    std::vector<StoredSession> stored;
    for (auto const& each : sessions) {
        if (auto session = archive.load(each.id, StoredPoints::LeftOut))
            stored.push_back(*std::move(session));
    }
    if (stored.empty()) {
        tell(window, QMessageBox::Critical,
            u"選択した測定は読み込めませんでした。管理者に知らせてください。"_s);
        return std::nullopt;
    }
    auto course = courseOf(std::move(stored));
    course.isComplete = course.isComplete && course.entries.size() == sessions.size();
    return course;
}

} // namespace

void showCourse(std::vector<SessionSummary> const& sessions, SessionArchive& archive,
    SessionServices const& services, QWidget& window)
{
    if (auto const chosen = course(sessions, archive, window))
        services.showCourse(*chosen, window);
}

void saveCourse(std::vector<SessionSummary> const& sessions, SessionArchive& archive,
    SessionServices const& services, QWidget& window)
{
    auto const chosen = course(sessions, archive, window);
    if (!chosen)
        return;
    bool const before = services.savePanel.setSimulated(chosen->isSimulated);
    auto const path = services.savePanel.runModal("csv");
    services.savePanel.setSimulated(before);
    if (!path)
        return;
    if (!services.fileWriter.writeAtomically(*path, encodeUtf16(csvOfCourse(*chosen)))) {
        tell(window, QMessageBox::Critical, QString::fromUtf8(saveFailedMessage));
        return;
    }
    auto text = u"経過のCSVを保存しました。\n%1"_s.arg(QString::fromStdString(*path));
    if (!chosen->isComplete)
        text += u'\n' + QString::fromUtf8(courseIncompleteMessage);
    tell(window, QMessageBox::Information, text);
}

} // namespace tensio
