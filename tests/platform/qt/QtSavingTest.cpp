#include "platform/qt/QtSaving.h"

#include "platform/qt/MainQueue.h"
#include "platform/qt/QtScreen.h"
#include "support/UnprivilegedUser.h"

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QImage>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <QWidget>

#include <csignal>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

using namespace tensio;

namespace {

// A disk that is full once a file has grown to the size.
void limitFileSize(rlim_t bytes)
{
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit const limit {bytes, RLIM_INFINITY};
    setrlimit(RLIMIT_FSIZE, &limit);
}

} // namespace

TEST(QtFileWriter, LeavesTheOldFileAndNothingElseWhereItCannotWriteTheNewOne)
{
    QTemporaryDir const folder;
    auto const name = folder.path().toStdString();
    auto const old = name + "/結果.csv";
    // Few enough to be buffered: what the disk refuses shows only in the end.
    std::string const bytes(10'000, 'x');
    constexpr rlim_t all = RLIM_INFINITY;
    std::vector<std::tuple<std::string, rlim_t, bool, mode_t, mode_t>> rows {
        {name, all, false, 0666, 0777}, {name + "/gone/file", all, false, 0666, 0777}};
    for (rlim_t room = 0; room <= bytes.size() + 1000; room += 1000)
        rows.emplace_back(old, room, room >= bytes.size(), 0666, 0777);
    rows.emplace_back(old, all, false, 0666, 0555);
    rows.emplace_back(old, all, false, 0444, 0777);
    for (auto const& [path, room, isDone, fileMode, folderMode] : rows) {
        std::ofstream(old) << "old";
        chmod(old.c_str(), fileMode);
        chmod(name.c_str(), folderMode);
        UnprivilegedUser const user;
        limitFileSize(room);
        EXPECT_EQ(QtFileWriter().writeAtomically(path, bytes), isDone) << path << room << fileMode;
        limitFileSize(RLIM_INFINITY);
        std::ifstream file(old);
        std::string const found(std::istreambuf_iterator<char>(file), {});
        EXPECT_EQ(found, isDone ? bytes : "old") << path << room;
        EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
    }
}

TEST(QtSavePanel, StartsAtTheDesktopAndCompletesTheTypeBeforeTheQuestionAboutOverwriting)
{
    QTemporaryDir const folder;
    qputenv("HOME", folder.path().toUtf8());
    QDir const desktop(folder.filePath("Desktop"));
    desktop.mkpath(".");
    QtFileWriter().writeAtomically(desktop.filePath("old.1.csv").toStdString(), "");
    MainQueue queue;
    int questions = 0;
    auto const confirm = [&] {
        auto* const modal = QApplication::activeModalWidget();
        auto* const question = qobject_cast<QMessageBox*>(modal);
        questions += question ? 1 : 0;
        question ? question->button(QMessageBox::Yes)->click() : void(modal->close());
    };
    for (std::string const name : {"2024.05.01", "results.txt", "old.1", ""}) {
        QTimer::singleShot(0, [&] {
            auto& panel = dynamic_cast<QFileDialog&>(*QApplication::activeModalWidget());
            EXPECT_EQ(panel.directory(), desktop);
            auto& input = *panel.findChild<QLineEdit*>("fileNameEdit");
            input.setText(QString::fromStdString(name));
            QTimer::singleShot(0, &panel, confirm);
            panel.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Save)->click();
        });
        auto const path = QtSavePanel(queue).runModal("csv");
        EXPECT_EQ(path.value_or(""),
            name.empty() ? "" : desktop.path().toStdString() + "/" + name + ".csv");
    }
    EXPECT_EQ(questions, 1);
}

TEST(QtScreen, PutsTheWindowOnTheClipboardAndReadsItBackAsPng)
{
    QWidget window;
    window.setGeometry(100, 50, 300, 200);
    window.setStyleSheet("background: #123456");
    window.show();
    QtScreen screen;
    QGuiApplication::clipboard()->clear();
    EXPECT_FALSE(screen.clipboardPng().has_value());
    screen.setMainWindow(window);
    auto const frame = screen.mainWindowFrame();
    EXPECT_EQ(frame.width, window.frameGeometry().width());
    EXPECT_EQ(frame.y + frame.height, screen.mainScreenHeight() - window.frameGeometry().top());
    screen.captureToClipboard({100.0, 50.0, 300.0, 200.0});
    auto const picture = QImage::fromData(QByteArray::fromStdString(*screen.clipboardPng()));
    EXPECT_EQ(picture.size(), QSize(300, 200));
    EXPECT_EQ(picture.pixelColor(150, 100), QColor(0x12, 0x34, 0x56));
}
