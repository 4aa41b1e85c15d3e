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
#include <utility>

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
        {std::pair {"lookInCombo", QStringLiteral("フォルダー")},
            {"fileTypeCombo", QStringLiteral("ファイルの種類")}}) {
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

// QFileDialog's default suffix is added only to names without a dot.
class TypedSavePanel : public QFileDialog {
public:
    explicit TypedSavePanel(QString type)
        : QFileDialog(frontWindow(), QStringLiteral("名前を付けて保存"), startingFolder(),
            QStringLiteral("%1 (*.%2)").arg(type.toUpper(), type))
        , m_type(std::move(type))
    {
        setAcceptMode(AcceptSave);
        setDefaultSuffix(m_type);
        describeControls(*this);
        fitScreen();
    }

    // Completes the name before QFileDialog asks about overwriting.
    void accept() override
    {
        auto* name = findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        if (name && !name->text().isEmpty() && !QFileInfo(selectedFiles().value(0)).isDir())
            name->setText(withType(name->text(), m_type));
        QFileDialog::accept();
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

    QString m_type;
};

} // namespace

std::optional<std::string> QtSavePanel::runModal(std::string const& fileType)
{
    auto const type = QString::fromStdString(fileType);
    auto const hold = m_queue.hold();
    TypedSavePanel panel(type);
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
    // commit() alone replaces the old file by a truncated one. After it the save has succeeded.
    if (file.write(bytes.data(), size) != size || !flushToDisk(file) || file.size() != size) {
        file.cancelWriting();
        return false;
    }
    return file.commit();
}

} // namespace tensio
