#include "sessions/CsvExport.h"

#include "core/CsvBuilder.h"
#include "core/DateText.h"
#include "core/SessionArchive.h"
#include "core/StoredMeasurements.h"
#include "core/Utf16.h"
#include "platform/Saving.h"
#include "sessions/Dialogs.h"
#include "sessions/TransferDialog.h"

#include <QDir>
#include <QRegularExpression>

#include <utility>

using namespace Qt::StringLiterals;

namespace tensio {

namespace {

// Of a file's name, which no file system lets grow beyond 255 bytes.
constexpr int mostCharacters = 60;

QString fileName(SessionSummary const& session)
{
    static QRegularExpression const forbidden(uR"([\x00-\x1f\x7f"*/:<>?\\|])"_s);
    auto name = QString::fromStdString(session.name).left(mostCharacters);
    // The first half of a character that the cut has split.
    if (!name.isEmpty() && name.back().isHighSurrogate())
        name.chop(1);
    name.replace(forbidden, u"_"_s);
    return QString::fromStdString(formatLocalTime(session.start, "%Y%m%d-%H%M_")) + name
        + (session.isSimulated ? u"（模擬装置）"_s : QString());
}

std::string freePath(QDir const& folder, QString const& name)
{
    auto path = folder.filePath(name + u".csv"_s);
    for (int number = 2; QFileInfo::exists(path); ++number)
        path = folder.filePath(name + u"_%1.csv"_s.arg(number));
    return path.toStdString();
}

// Where it stops, count() is the place of the session that failed.
class CsvExport : public SessionTransfer {
public:
    CsvExport(SessionArchive& archive, FileWriter& fileWriter, QDir const& folder,
        std::vector<SessionSummary> sessions, std::function<void(SessionId)> saved)
        : m_archive(archive)
        , m_fileWriter(fileWriter)
        , m_folder(folder)
        , m_sessions(std::move(sessions))
        , m_saved(std::move(saved))
    {
    }

    // One session.
    TransferState step() override;
    double progress() const override
    {
        return static_cast<double>(m_count) / static_cast<double>(m_sessions.size());
    }
    int count() const override { return static_cast<int>(m_count); }

    QString messageOf(TransferState end) const;

private:
    SessionArchive& m_archive;
    FileWriter& m_fileWriter;
    QDir m_folder;
    std::vector<SessionSummary> m_sessions;
    std::function<void(SessionId)> m_saved;
    std::size_t m_count = 0;
    // Damage hides nothing of what was saved.
    bool m_isComplete = true;
};

TransferState CsvExport::step()
{
    auto const& session = m_sessions.at(m_count);
    auto const stored = m_archive.load(session.id, StoredPoints::Loaded);
    if (!stored || stored->measurements.empty())
        return TransferState::Unreadable;
    auto const measurements = measurementsOf(*stored);
    auto const date = dateAndMinute(*measurements.back()->timeStamp);
    if (!m_fileWriter.writeAtomically(freePath(m_folder, fileName(session)),
            encodeUtf16(csvFile(session.name, date).build(measurements))))
        return TransferState::NotWritable;
    ++m_count;
    m_isComplete = m_isComplete && stored->isComplete;
    m_archive.markSaved(session.id);
    m_saved(session.id);
    return m_count < m_sessions.size() ? TransferState::Running : TransferState::Done;
}

QString CsvExport::messageOf(TransferState end) const
{
    auto text = u"%1件の測定のCSVを保存しました。"_s.arg(m_count);
    if (!m_isComplete)
        text += u'\n' + QString::fromUtf8(courseIncompleteMessage);
    if (end == TransferState::Done)
        return text;
    // Running: cancelled.
    if (end == TransferState::Running)
        return u"キャンセルしました。"_s + (m_count > 0 ? u"\nそれまでに、"_s + text : u""_s);
    auto const& failed = m_sessions.at(m_count);
    auto const what = QString::fromStdString(dateAndMinute(failed.start) + "　" + failed.name);
    auto const why = end == TransferState::Unreadable
        ? u"の記録は壊れていて、読み込めませんでした。\n管理者に知らせてください。"_s
        : u"のCSVを保存できませんでした。\n空き容量と書き込みの許可を確かめてください。"_s;
    return what + why + (m_count > 0 ? u"\nその前の"_s + text : u""_s);
}

} // namespace

void exportCsv(std::vector<SessionSummary> const& sessions, SessionArchive& archive,
    FileWriter& fileWriter, QWidget& window, std::function<void(SessionId)> const& saved)
{
    auto const run = [=, &archive, &fileWriter, &window](QString const& folder) {
        auto transfer = std::make_unique<CsvExport>(archive, fileWriter, folder, sessions, saved);
        auto const& files = *transfer;
        new TransferDialog(
            std::move(transfer), u"CSVを保存しています…"_s,
            [&files, &window](TransferState end, int) {
                bool const isAsked = end == TransferState::Done || end == TransferState::Running;
                tell(window, isAsked ? QMessageBox::Information : QMessageBox::Critical,
                    files.messageOf(end));
            },
            window);
    };
    choose(window, u"CSVを保存するフォルダー"_s, QFileDialog::Directory, {}, run);
}

} // namespace tensio
