#include "platform/qt/QtSaving.h"

#include "platform/qt/MainQueue.h"
#include "platform/qt/QtScreen.h"
#include "support/FullDisk.h"
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
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QWidget>

#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace tensio;

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
    desktop.mkpath("sub");
    QDir shown;
    QtFileWriter().writeAtomically(desktop.filePath("old.1.csv").toStdString(), "");
    MainQueue queue;
    int questions = 0;
    auto const confirm = [&] {
        auto* const modal = QApplication::activeModalWidget();
        auto* const question = qobject_cast<QMessageBox*>(modal);
        questions += question ? 1 : 0;
        if (auto const* panel = qobject_cast<QFileDialog*>(modal))
            shown = panel->directory();
        question ? question->button(QMessageBox::Yes)->click() : void(modal->close());
    };
    for (std::string const name :
        {"2024.05.01", "results.txt", "old.1", "a\"b", "DATA.CSV", "", "gone/", "sub/"}) {
        QTimer::singleShot(0, [&] {
            auto& panel = dynamic_cast<QFileDialog&>(*QApplication::activeModalWidget());
            queue.post([&] { EXPECT_EQ(QApplication::activeModalWidget(), nullptr); });
            QCoreApplication::processEvents();
            EXPECT_EQ(panel.directory(), desktop);
            EXPECT_LT(panel.width(), panel.screen()->size().width());
            EXPECT_EQ(panel.windowTitle().contains("模擬"), name == "old.1");
            auto& input = *panel.findChild<QLineEdit*>("fileNameEdit");
            input.setText(QString::fromStdString(name));
            QTimer::singleShot(0, &panel, confirm);
            panel.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Save)->click();
        });
        QtSavePanel panel(queue);
        panel.setSimulated(name == "old.1");
        auto const* const type = name == "DATA.CSV" ? "" : ".csv";
        bool const isName = !name.empty() && !name.ends_with('/');
        auto const file = QString::fromStdString(name + type).replace('"', "”");
        EXPECT_EQ(
            panel.runModal("csv").value_or(""), isName ? desktop.filePath(file).toStdString() : "");
    }
    EXPECT_EQ(questions, 1);
    EXPECT_EQ(shown, desktop.filePath("sub"));
}

// The window on each screen that there is: one without a display; the script two-screens has
// others.
TEST(QtScreen, PutsTheWindowAsItIsNowOnTheClipboardAndReadsItBackAsPng)
{
    MainQueue queue;
    QtScreen screen(queue);
    QGuiApplication::clipboard()->clear();
    screen.captureToClipboard({0.0, 0.0, 10.0, 10.0});
    EXPECT_FALSE(screen.clipboardPng().has_value()) << "without a window";
    for (auto const* place : QGuiApplication::screens()) {
        QWidget window;
        window.setGeometry(QRect(place->geometry().topLeft() + QPoint(100, 50), QSize(300, 200)));
        window.setPalette(Qt::red);
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
        screen.setMainWindow(window);
        auto const due = queue.willHold.signal.observeValues(
            [&](Nothing) { window.setPalette(QColor(0x12, 0x34, 0x56)); });
        auto const frame = screen.mainWindowFrame();
        auto const top = screen.mainScreenHeight() - frame.y - frame.height;
        auto const corner
            = QGuiApplication::primaryScreen()->geometry().topLeft() + QPointF(frame.x, top);
        EXPECT_EQ(QRectF(corner, QSizeF(frame.width, frame.height)), window.frameGeometry());
        screen.captureToClipboard({frame.x, top, frame.width, frame.height});
        auto picture = QImage::fromData(QByteArray::fromStdString(*screen.clipboardPng()));
        EXPECT_EQ(picture.size(), QSizeF(300.0, 200.0) * window.devicePixelRatioF());
        auto whole = picture;
        whole.fill(QColor(0x12, 0x34, 0x56));
        EXPECT_EQ(picture.convertedTo(whole.format()), whole) << place->name().toStdString();
    }
}
