#include "sessions/CsvExport.h"

#include "core/CsvBuilder.h"
#include "core/DateText.h"
#include "core/SessionArchive.h"
#include "core/StoredMeasurements.h"
#include "core/Utf16.h"
#include "platform/Saving.h"

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

} // namespace

CsvExport::CsvExport(SessionArchive& archive, FileWriter& fileWriter, QDir const& folder,
    std::vector<SessionSummary> sessions, Written written)
    : m_archive(archive)
    , m_fileWriter(fileWriter)
    , m_folder(folder)
    , m_sessions(std::move(sessions))
    , m_written(std::move(written))
{
}

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
    m_written(*stored);
    return m_count < m_sessions.size() ? TransferState::Running : TransferState::Done;
}

double CsvExport::progress() const
{
    return static_cast<double>(m_count) / static_cast<double>(m_sessions.size());
}

} // namespace tensio
