#include "platform/qt/SessionFile.h"

#include "platform/qt/SyncFile.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUrl>

#include <algorithm>
#include <filesystem>
#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

using namespace Qt::StringLiterals;

namespace tensio {

StoreProblem prepareSessionFile(QString const& path)
{
    auto const folder = QFileInfo(path).path();
    std::error_code error;
    std::filesystem::create_directories(folder.toStdU16String(), error);
    if (error == std::errc::no_space_on_device)
        return StoreProblem::NoSpace;
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    QFile file(path);
    bool const isReady = file.open(QIODevice::ReadWrite)
        && file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    return isReady ? StoreProblem::None : StoreProblem::NotWritable;
}

bool moveSessionFile(QString const& path, QLatin1StringView reason)
{
    auto const now = QDateTime::currentDateTime().toString(u"yyyyMMdd-HHmmss"_s);
    auto const moved = u"%1.%2-%3"_s.arg(path, reason, now);
    if (QFile::exists(journalOf(path)) && !QFile::rename(journalOf(path), journalOf(moved)))
        return false;
    if (QFile::rename(path, moved))
        return true;
    QFile::rename(journalOf(moved), journalOf(path));
    return false;
}

QStringList movedSessionFiles(QString const& path, QLatin1StringView reason)
{
    QFileInfo const file(path);
    QStringList paths;
    for (auto const& moved : file.dir().entryInfoList(
             {u"%1.%2-*"_s.arg(file.fileName(), reason)}, QDir::Files, QDir::Name))
        paths += moved.filePath();
    return paths;
}

QString journalOf(QString const& path)
{
    return path + u"-wal"_s;
}

QString readOnlyUrl(QString const& path)
{
    return QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded) + u"?mode=ro&immutable=1"_s;
}

bool wipeFile(QString const& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite))
        return false;
    QByteArray const zeros(1 << 20, '\0');
    qint64 const size = file.size();
    while (file.pos() < size) {
        if (file.write(zeros.constData(), std::min(size - file.pos(), zeros.size())) <= 0)
            return false;
    }
    return file.flush() && syncFile(file.handle()) && file.remove();
}

bool flushFile(QString const& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly) && syncFile(file.handle());
}

bool replaceFile(QString const& from, QString const& to)
{
    std::error_code error;
    std::filesystem::rename(from.toStdU16String(), to.toStdU16String(), error);
    return !error;
}

quint64 fileNumber(QString const& path)
{
#ifdef Q_OS_UNIX
    struct stat status { };
    return stat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_ino : 0;
#else
    return QFileInfo::exists(path) ? 1 : 0;
#endif
}

} // namespace tensio
