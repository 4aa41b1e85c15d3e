#include "platform/qt/QtSaving.h"

#include "platform/qt/MainQueue.h"
#include "platform/qt/QtScreen.h"
#include "support/UnprivilegedUser.h"

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QImage>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
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

TEST(QtFileWriter, RefusesWhatCannotBeWrittenAndLeavesTheOldFile)
{
    QTemporaryDir folder;
    auto const name = folder.path().toStdString();
    auto const old = name + "/old.csv";
    QtFileWriter writer;
    ASSERT_TRUE(writer.writeAtomically(old, "old"));
    struct Row {
        std::string path;
        mode_t fileMode;
        mode_t folderMode;
    };
    for (auto const& [path, fileMode, folderMode] :
        std::vector<Row> {{name, 0666, 0777}, {name + "/gone/file", 0666, 0777}, {"", 0666, 0777},
            {"/proc/none", 0666, 0777}, {old, 0444, 0777}, {old, 0666, 0555}}) {
        chmod(old.c_str(), fileMode);
        chmod(name.c_str(), folderMode);
        UnprivilegedUser const user;
        EXPECT_FALSE(writer.writeAtomically(path, "new")) << path << fileMode;
        EXPECT_EQ(contents(QString::fromStdString(old)), "old");
        EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
    }
}

TEST(QtSavePanel, StartsAtTheDesktopAndCompletesTheTypeBeforeTheQuestionAboutOverwriting)
{
    auto const home = qgetenv("HOME");
    QTemporaryDir folder;
    qputenv("HOME", QFile::encodeName(folder.path()));
    QDir const desktop(folder.filePath(QStringLiteral("Desktop")));
    desktop.mkpath(QStringLiteral("."));
    QtFileWriter().writeAtomically(desktop.filePath(QStringLiteral("old.1.csv")).toStdString(), "");
    MainQueue queue;
    int questions = 0;
    auto const confirm = [&] {
        auto& modal = dynamic_cast<QDialog&>(*QApplication::activeModalWidget());
        if (auto* question = qobject_cast<QMessageBox*>(&modal)) {
            ++questions;
            question->button(QMessageBox::Yes)->click();
        } else {
            modal.reject();
        }
    };
    for (std::string const name : {"plain", "2024.05.01", "yamada.1", "results.txt", "old.1"}) {
        QTimer::singleShot(0, [&] {
            auto& panel = dynamic_cast<QFileDialog&>(*QApplication::activeModalWidget());
            EXPECT_EQ(panel.directory(), desktop);
            auto& input = *panel.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
            EXPECT_TRUE(input.text().isEmpty());
            input.setText(QString::fromStdString(name));
            QTimer::singleShot(0, &panel, confirm);
            panel.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Save)->click();
        });
        EXPECT_EQ(
            QtSavePanel(queue).runModal("csv"), desktop.path().toStdString() + "/" + name + ".csv");
    }
    EXPECT_EQ(questions, 1);
    QDir().rename(desktop.path(), folder.filePath(QStringLiteral("x")));
    QTimer::singleShot(0, [] {
        auto& panel = dynamic_cast<QFileDialog&>(*QApplication::activeModalWidget());
        EXPECT_EQ(panel.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->text(), QString());
        panel.reject();
    });
    EXPECT_FALSE(QtSavePanel(queue).runModal("csv").has_value());
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
