#include "platform/qt/QtSaving.h"

#include "platform/qt/FrontWindow.h"
#include "platform/qt/MainQueue.h"
#include "platform/qt/SyncFile.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QSaveFile>
#include <QScreen>
#include <QStandardPaths>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tensio {

namespace {

// A full disk or a quota may be reported only when the system writes its own buffers out.
bool flushToDisk(QSaveFile& file)
{
    return file.flush() && file.error() == QFileDevice::NoError && syncFile(file.handle());
}

// In Qt's own panel the accessible names of these controls are the values they show.
void describeControls(QFileDialog& panel)
{
    for (auto const& [control, description] :
        {std::pair {"lookInCombo", u"フォルダー"_s}, {"fileTypeCombo", u"ファイルの種類"_s}}) {
        if (auto* found = panel.findChild<QWidget*>(QString::fromLatin1(control)))
            found->setAccessibleDescription(description);
    }
}

// The panel would take a missing folder for the name of the file.
QString startingFolder()
{
    auto const desktop = QStandardPaths::writableLocation(QStandardPaths::DesktopLocation);
    return QFileInfo(desktop).isDir() ? desktop : QString();
}

QString withType(QString const& path, QString const& type)
{
    QString const suffix = u'.' + type;
    return path.endsWith(suffix, Qt::CaseInsensitive) ? path : path + suffix;
}

QString titleOf(bool isSimulated)
{
    return isSimulated ? u"名前を付けて保存 — 模擬装置（実際の測定ではありません）"_s
                       : u"名前を付けて保存"_s;
}

// QFileDialog adds its default suffix only to names without a dot, but also to a folder's, and
// would divide a name at quotation marks.
class TypedSavePanel : public QFileDialog {
public:
    TypedSavePanel(QString const& type, bool isSimulated)
        : QFileDialog(frontWindow(), titleOf(isSimulated), startingFolder(),
            u"%1 (*.%2)"_s.arg(type.toUpper(), type))
    {
        setAcceptMode(AcceptSave);
        setDefaultSuffix(type);
        describeControls(*this);
        fitScreen();
    }

    void accept() override
    {
        auto* const input = findChild<QLineEdit*>(u"fileNameEdit"_s);
        auto const name = input ? input->text() : QString();
        QFileInfo const file(directory(), name);
        if (name.isEmpty()) {
            QFileDialog::accept();
        } else if (file.isDir()) {
            setDirectory(file.filePath());
            input->clear();
        } else if (name.endsWith(u'/')) {
            input->selectAll();
        } else {
            input->setText(withType(name, defaultSuffix()).replace(u'"', u'”'));
            QFileDialog::accept();
        }
    }

private:
    // The style sheet's least width is more than small screens have.
    void fitScreen()
    {
        auto const room = screen()->availableSize() - QSize(8, 42);
        ensurePolished();
        setMinimumWidth(std::min(minimumWidth(), room.width()));
        resize(sizeHint().expandedTo(minimumSize()).boundedTo(room));
    }
};

} // namespace

std::optional<std::string> QtSavePanel::runModal(std::string const& fileType)
{
    auto const type = QString::fromStdString(fileType);
    auto const hold = m_queue.hold();
    TypedSavePanel panel(type, m_isSimulated);
    while (panel.exec() == QDialog::Accepted) {
        auto const chosen = panel.selectedFiles().constFirst();
        auto const path = withType(chosen, type);
        if (path == chosen || !QFileInfo::exists(path))
            return path.toStdString();
        // The desktop's own panel asked about the name without the type, if at all. Ask again.
        panel.selectFile(path);
    }
    return std::nullopt;
}

bool QtFileWriter::writeAtomically(std::string const& path, std::string_view bytes)
{
    auto const size = static_cast<qint64>(bytes.size());
    QSaveFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::WriteOnly))
        return false;
    // On a full disk commit() would replace the old file by a truncated one and return true.
    if (file.write(bytes.data(), size) != size || !flushToDisk(file) || file.size() != size) {
        file.cancelWriting();
        return false;
    }
    return file.commit();
}

} // namespace tensio
