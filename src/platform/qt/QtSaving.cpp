#include "platform/qt/QtSaving.h"

#include "platform/qt/FrontWindow.h"
#include "platform/qt/MainQueue.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

#include <utility>
#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace tensio {

namespace {

// A full disk or a quota may show only when the system writes its own buffers out.
bool reachesTheDisk(QSaveFile& file)
{
    if (!file.flush() || file.error() != QFileDevice::NoError)
        return false;
#ifdef Q_OS_UNIX
    return fsync(file.handle()) == 0;
#else
    return true;
#endif
}

// Where the toolkit draws the panel, these controls are named by what they show.
void describeControls(QFileDialog& panel)
{
    for (auto const& [control, description] :
        {std::pair {"lookInCombo", u"フォルダー"_qs}, {"fileTypeCombo", u"ファイルの種類"_qs}}) {
        if (auto* found = panel.findChild<QWidget*>(QString::fromLatin1(control)))
            found->setAccessibleDescription(description);
    }
}

// The panel would take a folder that is not there for the name of the file.
QString startingFolder()
{
    auto const desktop = QStandardPaths::writableLocation(QStandardPaths::DesktopLocation);
    return QFileInfo(desktop).isDir() ? desktop : QString();
}

} // namespace

std::optional<std::string> QtSavePanel::runModal(std::string const& fileType)
{
    auto const type = QString::fromStdString(fileType);
    auto const hold = m_queue.hold();
    QFileDialog panel(frontWindow(), QStringLiteral("名前を付けて保存"), startingFolder(),
        QStringLiteral("%1 (*.%2)").arg(type.toUpper(), type));
    panel.setAcceptMode(QFileDialog::AcceptSave);
    panel.setDefaultSuffix(type);
    describeControls(panel);
    if (panel.exec() != QDialog::Accepted)
        return std::nullopt;
    return panel.selectedFiles().constFirst().toStdString();
}

bool QtFileWriter::writeAtomically(std::string const& path, std::string_view bytes)
{
    auto const size = static_cast<qint64>(bytes.size());
    QSaveFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::WriteOnly))
        return false;
    // The old file must not be replaced before all of the new one is known to be there: committing
    // alone does not notice a truncated file. Afterwards nothing may call the save a failure.
    if (file.write(bytes.data(), size) != size || !reachesTheDisk(file) || file.size() != size) {
        file.cancelWriting();
        return false;
    }
    return file.commit();
}

} // namespace tensio
