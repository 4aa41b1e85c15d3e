#include "platform/qt/QtSaving.h"

#include "platform/qt/MainQueue.h"
#include "platform/qt/QtScreen.h"
#include "support/UnprivilegedUser.h"

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QImage>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTimer>
#include <QWidget>

#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

using namespace tensio;

namespace {

QByteArray contents(QString const& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Lets no file of this process grow over the size: a disk that is full from there on.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        rlimit const limit {bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    FileSizeLimit(FileSizeLimit const&) = delete;
    FileSizeLimit& operator=(FileSizeLimit const&) = delete;
    ~FileSizeLimit() { setrlimit(RLIMIT_FSIZE, &m_before); }

private:
    rlimit m_before {};
};

} // namespace

TEST(QtFileWriter, AtEveryFillLevelOfTheDiskTheFileIsOldOrNew)
{
    QTemporaryDir folder;
    auto const path = folder.filePath(QStringLiteral("結果.csv"));
    QtFileWriter writer;
    ASSERT_TRUE(writer.writeAtomically(path.toStdString(), "old"));
    std::string const bytes(70'000, 'x');
    for (rlim_t room = 0; room <= bytes.size() + 4096; room += 4096) {
        bool isWritten = false;
        {
            FileSizeLimit const limit(room);
            isWritten = writer.writeAtomically(path.toStdString(), bytes);
        }
        bool const fits = room >= bytes.size();
        EXPECT_EQ(isWritten, fits) << room;
        EXPECT_EQ(contents(path), fits ? QByteArray::fromStdString(bytes) : QByteArray("old"))
            << room;
        EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 1) << room;
    }
}

TEST(QtFileWriter, SaysSoWhenThePlaceCannotBeWritten)
{
    QTemporaryDir folder;
    QtFileWriter writer;
    EXPECT_FALSE(writer.writeAtomically(folder.path().toStdString(), "x")) << "name of a folder";
    EXPECT_FALSE(
        writer.writeAtomically(folder.filePath(QStringLiteral("gone/file")).toStdString(), "x"));
    EXPECT_FALSE(writer.writeAtomically("", "x"));
    EXPECT_FALSE(writer.writeAtomically("/proc/none", "x"));
    EXPECT_TRUE(writer.writeAtomically(folder.filePath(QStringLiteral("empty")).toStdString(), ""));
}

TEST(QtFileWriter, LeavesAloneWhatMayNotBeWritten)
{
    QTemporaryDir folder;
    auto const path = folder.filePath(QStringLiteral("old.csv"));
    QtFileWriter writer;
    ASSERT_TRUE(writer.writeAtomically(path.toStdString(), "old"));
    struct Row {
        mode_t file;
        mode_t folder;
    };
    for (auto const& [fileMode, folderMode] : std::vector<Row> {{0444, 0777}, {0666, 0555}}) {
        chmod(path.toLocal8Bit().constData(), fileMode);
        chmod(folder.path().toLocal8Bit().constData(), folderMode);
        UnprivilegedUser const user;
        EXPECT_FALSE(writer.writeAtomically(path.toStdString(), "new")) << fileMode;
        EXPECT_EQ(contents(path), "old");
        EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
    }
}

TEST(QtSavePanel, StartsAtTheDesktopIfThereIsOneAndProposesNoName)
{
    auto const home = qgetenv("HOME");
    QTemporaryDir folder;
    qputenv("HOME", QFile::encodeName(folder.path()));
    MainQueue queue;
    QtSavePanel savePanel(queue);
    QDir const desktop(folder.filePath(QStringLiteral("Desktop")));
    for (bool const exists : {false, true}) {
        if (exists)
            desktop.mkpath(QStringLiteral("."));
        bool isShown = false;
        QTimer::singleShot(0, [&] {
            auto* panel = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            isShown = panel;
            EXPECT_EQ(panel->directory() == desktop, exists);
            EXPECT_EQ(
                panel->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->text(), QString());
            panel->reject();
        });
        EXPECT_FALSE(savePanel.runModal("csv").has_value());
        EXPECT_TRUE(isShown);
    }
    qputenv("HOME", home);
}

TEST(QtScreen, PutsTheWindowOnTheClipboardAndReadsItBackAsPng)
{
    QWidget window;
    window.setGeometry(100, 50, 300, 200);
    window.setStyleSheet(QStringLiteral("background: #123456"));
    window.show();
    QtScreen screen;
    QGuiApplication::clipboard()->clear();
    EXPECT_FALSE(screen.clipboardPng().has_value());
    screen.setMainWindow(window);
    auto const frame = screen.mainWindowFrame();
    EXPECT_EQ(frame.width, window.frameGeometry().width());
    EXPECT_EQ(frame.y + frame.height, screen.mainScreenHeight() - window.frameGeometry().top());

    screen.captureToClipboard({100.0, 50.0, 300.0, 200.0});
    auto const png = screen.clipboardPng();
    ASSERT_TRUE(png.has_value());
    auto const picture = QImage::fromData(QByteArray::fromStdString(*png));
    EXPECT_EQ(picture.size(), QSize(300, 200));
    EXPECT_EQ(picture.pixelColor(150, 100), QColor(0x12, 0x34, 0x56));
}
