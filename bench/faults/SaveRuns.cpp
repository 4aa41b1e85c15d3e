#include "Figure.h"
#include "platform/qt/QtSaving.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTimer>

#include <cerrno>
#include <gtest/gtest.h>
#include <initializer_list>
#include <limits>
#include <map>
#include <random>
#include <sys/mount.h>
#include <unistd.h>

// Saves that are killed, starved of room, or refused by the system at each of its calls.

using namespace tensio;

namespace {

constexpr int size = 300'000;

// A folder with a file that a save is to replace.
struct Target {
    QTemporaryDir folder;
    QString path {folder.filePath(QStringLiteral("結果.csv"))};
    QByteArray old = QByteArray(size / 2, 'o');

    explicit Target(bool exists = true)
    {
        if (exists)
            EXPECT_TRUE(QtFileWriter().writeAtomically(path.toStdString(), old.toStdString()));
        else
            old.clear();
    }

    QByteArray contents() const
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    // Files beside the target.
    qsizetype leftovers() const
    {
        auto const all = QDir(folder.path()).entryList(QDir::Files | QDir::Hidden);
        return all.size() - (QFile::exists(path) ? 1 : 0);
    }
    QStringList worker(QStringList const& more = {}) const
    {
        return QStringList {QStringLiteral(TENSIO_SAVE_WORKER), path, QString::number(size),
                   QStringLiteral("n")}
        + more;
    }
};

struct Tally {
    int runs = 0;
    int torn = 0;
    int falseSuccesses = 0;
    int falseFailures = 0;
    qsizetype leftovers = 0;

    void add(Target const& target, bool claimsSuccess)
    {
        auto const found = target.contents();
        bool const isNew = found == QByteArray(size, 'n');
        ++runs;
        torn += isNew || found == target.old ? 0 : 1;
        falseSuccesses += claimsSuccess && !isNew ? 1 : 0;
        falseFailures += !claimsSuccess && isNew ? 1 : 0;
        leftovers += target.leftovers();
    }
    int wrong() const { return torn + falseSuccesses + falseFailures; }
    std::string text() const
    {
        return std::to_string(runs) + " saves, " + std::to_string(torn) + " torn, "
            + std::to_string(falseSuccesses) + " false successes, " + std::to_string(leftovers)
            + " files left";
    }
};

// Each system call of a save as the name and the count of it since the program's start.
using Calls = std::vector<std::pair<QString, int>>;

Calls callsOfASave(bool exists)
{
    Target const target(exists);
    auto const log = target.folder.filePath(QStringLiteral("log"));
    QProcess::execute(
        QStringLiteral("strace"), QStringList {QStringLiteral("-o"), log} + target.worker());
    QFile file(log);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    Calls calls;
    std::map<QString, int> counts;
    bool isSaving = false;
    for (auto const& line : file.readAll().split('\n')) {
        auto const name = QString::fromUtf8(line.left(line.indexOf('(')));
        auto const count = ++counts[name];
        if (line.contains("/save-begins") || line.contains("/save-ended"))
            isSaving = line.contains("/save-begins");
        else if (isSaving)
            calls.emplace_back(name, count);
    }
    return calls;
}

// How the worker ends when this happens at this call: 0 when it claims success.
int saveWith(Target const& target, QString const& call, int count, QString const& what)
{
    QProcess strace;
    strace.start(QStringLiteral("strace"),
        QStringList {QStringLiteral("-o"), QStringLiteral("/dev/null"), QStringLiteral("-e"),
            QStringLiteral("inject=%1:%2:when=%3").arg(call, what).arg(count)}
            + target.worker());
    strace.waitForFinished(-1);
    return strace.exitStatus() == QProcess::NormalExit ? strace.exitCode() : -1;
}

struct Levels {
    int all = 0;
    int wrong = 0;
    int successes = 0;
    int lastError = 0; // of the writing that filled the disk

    std::string text(std::string const& disk) const
    {
        return std::to_string(all) + " fill levels of " + disk + ": " + std::to_string(wrong)
            + " torn, false or left over, " + std::to_string(successes) + " with room";
    }
};

constexpr int page = 4096;

// Fills the disk with a file of at most so many bytes; how many there were room for.
qint64 fill(QFile& file, qint64 most)
{
    EXPECT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    qint64 written = 0;
    while (written < most && file.write(QByteArray(page, 'f')) == page)
        written += page;
    syncfs(file.handle());
    return written;
}

void empty(QFile& file)
{
    file.resize(0);
    syncfs(file.handle());
    file.remove();
}

// From no room at all to so many pages more than the file has.
Levels saveAtEveryFillLevel(QString const& place, int sparePages)
{
    QDir const folder(place);
    auto const path = folder.filePath(QStringLiteral("結果.csv")).toStdString();
    std::string const bytes(size, 'n');
    QtFileWriter writer;
    EXPECT_TRUE(writer.writeAtomically(path, "old"));
    QFile filler(folder.filePath(QStringLiteral("filler")));
    Levels levels;
    auto const capacity = fill(filler, std::numeric_limits<qint64>::max());
    levels.lastError = errno;
    empty(filler);
    for (int room = 0; room <= size + sparePages * page; room += page) {
        EXPECT_TRUE(writer.writeAtomically(path, "old"));
        fill(filler, capacity - room);
        bool const claims = writer.writeAtomically(path, bytes);
        QFile file(QString::fromStdString(path));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        auto const expected = claims ? QByteArray::fromStdString(bytes) : QByteArray("old");
        levels.wrong += file.readAll() == expected ? 0 : 1;
        levels.wrong += folder.entryList(QDir::Files | QDir::Hidden).size() == 2 ? 0 : 1;
        levels.successes += claims ? 1 : 0;
        ++levels.all;
        empty(filler);
    }
    EXPECT_EQ(levels.wrong, 0);
    EXPECT_GT(levels.successes, 0);
    EXPECT_GT(levels.all - levels.successes, size / page - 2);
    return levels;
}

bool hasRun(std::initializer_list<QString> const& words)
{
    QStringList command(words);
    auto const program = command.takeFirst();
    return QProcess::execute(program, command) == 0;
}

} // namespace

TEST(SaveRuns, EverySystemCallFailsOnce)
{
    Tally tally;
    int claims = 0;
    for (bool const exists : {true, false}) {
        auto const calls = callsOfASave(exists);
        ASSERT_GE(calls.size(), 10U);
        for (auto const& [call, count] : calls) {
            for (auto const* error :
                {"error=ENOSPC", "error=EDQUOT", "error=EIO", "error=EINTR", "error=EACCES"}) {
                Target const target(exists);
                auto const result = saveWith(target, call, count, QString::fromLatin1(error));
                auto const before = tally;
                tally.add(target, result == 0);
                claims += result == 0 ? 1 : 0;
                if (tally.wrong() > before.wrong() || tally.leftovers > before.leftovers)
                    std::printf("%s call %d of %s: ends with %d, %s, %d false failures\n", error,
                        count, qPrintable(call), result, tally.text().c_str(), tally.falseFailures);
            }
        }
    }
    EXPECT_EQ(tally.wrong(), 0);
    EXPECT_EQ(tally.leftovers, 0);
    EXPECT_GT(tally.runs - claims, 20) << "calls that matter must be among them";
    report("each system call refused with 5 errors: " + tally.text() + ", "
        + std::to_string(tally.falseFailures) + " false failures");
}

TEST(SaveRuns, KilledAtEverySystemCall)
{
    Tally tally;
    for (bool const exists : {true, false}) {
        for (auto const& [call, count] : callsOfASave(exists)) {
            Target const target(exists);
            tally.add(target, saveWith(target, call, count, QStringLiteral("signal=KILL")) == 0);
        }
    }
    EXPECT_EQ(tally.torn, 0);
    EXPECT_EQ(tally.falseSuccesses, 0);
    report("killed at each system call: " + tally.text());
}

TEST(SaveRuns, KilledFiveHundredTimes)
{
    constexpr int kills = 500;
    std::mt19937 random(4);
    Target const target;
    int torn = 0;
    for (int kill = 0; kill < kills; ++kill) {
        QProcess worker;
        auto arguments = target.worker({QStringLiteral("forever")});
        worker.start(arguments.takeFirst(), arguments);
        ASSERT_TRUE(worker.waitForReadyRead(-1));
        usleep(static_cast<useconds_t>(random() % 10'000));
        worker.kill();
        worker.waitForFinished(-1);
        auto const found = target.contents();
        bool const isWhole = found == QByteArray(size, 'n') || found == QByteArray(size, 'N');
        torn += isWhole ? 0 : 1;
    }
    EXPECT_EQ(torn, 0);
    EXPECT_TRUE(QtFileWriter().writeAtomically(target.path.toStdString(), "next"));
    report(std::to_string(kills) + " times killed at random: " + std::to_string(torn) + " torn, "
        + std::to_string(target.leftovers()) + " files left; the next save works");
}

TEST(SaveRuns, EveryFillLevelOfASmallDisk)
{
    QTemporaryDir folder;
    auto const place = folder.path().toLocal8Bit();
    if (mount("tmpfs", place.constData(), "tmpfs", 0, "size=1m") != 0)
        GTEST_SKIP() << "only root mounts a small disk";
    auto const levels = saveAtEveryFillLevel(folder.path(), 2);
    umount(place.constData());
    report(levels.text("a small disk"));
}

TEST(SaveRuns, EveryFillLevelOfAQuota)
{
    QTemporaryDir folder;
    auto const image = folder.filePath(QStringLiteral("image"));
    auto const place = folder.filePath(QStringLiteral("disk"));
    QDir().mkdir(place);
    if (!hasRun({QStringLiteral("truncate"), QStringLiteral("-s"), QStringLiteral("256M"), image})
        || !hasRun({QStringLiteral("mkfs.btrfs"), QStringLiteral("-q"), image})
        || !hasRun(
            {QStringLiteral("mount"), QStringLiteral("-o"), QStringLiteral("loop"), image, place}))
        GTEST_SKIP() << "only root mounts a disk with quotas";
    EXPECT_TRUE(hasRun(
        {QStringLiteral("btrfs"), QStringLiteral("quota"), QStringLiteral("enable"), place}));
    EXPECT_TRUE(hasRun({QStringLiteral("btrfs"), QStringLiteral("quota"), QStringLiteral("rescan"),
        QStringLiteral("-w"), place}));
    EXPECT_TRUE(hasRun({QStringLiteral("btrfs"), QStringLiteral("qgroup"), QStringLiteral("limit"),
        QStringLiteral("1M"), QStringLiteral("0/5"), place}));
    auto const levels = saveAtEveryFillLevel(place, 128);
    EXPECT_TRUE(hasRun({QStringLiteral("umount"), place}));
    EXPECT_EQ(levels.lastError, EDQUOT);
    report(levels.text("a quota"));
}
