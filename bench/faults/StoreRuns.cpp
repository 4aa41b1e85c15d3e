#include "Figure.h"
#include "SessionWorker.h"
#include "platform/qt/QtSessionStore.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <unistd.h>

// A session's store whose program is killed, or refused by the system at each of its calls.

using namespace tensio;

namespace {

struct Place {
    QTemporaryDir folder;
    QString store {folder.filePath(QStringLiteral("data/sessions.db"))};
    QString other {folder.filePath(QStringLiteral("other"))};

    QStringList worker(QStringList const& more = {}) const
    {
        return QStringList {QStringLiteral(TENSIO_SESSION_WORKER), store, other} + more;
    }
    Progress progress() const
    {
        Progress progress {};
        QFile file(other);
        if (file.open(QIODevice::ReadOnly))
            std::memcpy(&progress, file.readAll().leftJustified(sizeof progress, '\0').constData(),
                sizeof progress);
        return progress;
    }
};

bool isAsRecorded(std::vector<float> const& points)
{
    int place = 0;
    return std::ranges::all_of(
        points, [&](float point) { return point == static_cast<float>(workerPressure(place++)); });
}

struct Losses {
    std::size_t recorded = 0;
    std::size_t finished = 0;
    std::size_t mostPoints = 0;
    int wrong = 0;

    void add(Progress const& progress, std::vector<StoredMeasurement> const& stored)
    {
        recorded += progress.finished;
        finished += progress.finished - std::min(progress.finished, stored.size());
        auto const running
            = stored.size() > progress.finished ? stored[progress.finished].points.size() : 0;
        mostPoints = std::max(mostPoints, progress.running - std::min(progress.running, running));
        for (std::size_t index = 0; index < stored.size(); ++index) {
            bool const isWhole
                = index >= progress.finished || stored[index].points.size() == 20 * (1 + index % 5);
            wrong += isWhole && isAsRecorded(stored[index].points) ? 0 : 1;
        }
    }
};

// Each system call that changes something, as its name and the count of it since the start.
std::vector<std::pair<QString, int>> changingCalls()
{
    Place const place;
    QProcess::execute(QStringLiteral("strace"),
        QStringList {QStringLiteral("-f"), QStringLiteral("-o"),
            place.folder.filePath(QStringLiteral("log"))}
            + place.worker({QStringLiteral("once")}));
    QFile file(place.folder.filePath(QStringLiteral("log")));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    QStringList const changing = QStringLiteral(
        "write pwrite64 fsync fdatasync rename unlink ftruncate openat mkdir chmod fchmod")
                                     .split(u' ');
    std::vector<std::pair<QString, int>> calls;
    std::map<QString, int> counts;
    bool isStoring = false;
    for (auto const& line : QString::fromUtf8(file.readAll()).split(u'\n')) {
        auto const name = line.section(u' ', 1).trimmed().section(u'(', 0, 0);
        int const count = ++counts[name];
        if (line.contains(QStringLiteral("/store-")))
            isStoring = line.contains(QStringLiteral("/store-begins"));
        else if (isStoring && changing.contains(name)
            && (name != QStringLiteral("openat") || line.contains(QStringLiteral("sessions.db"))))
            calls.emplace_back(name, count);
    }
    return calls;
}

} // namespace

TEST(StoreRuns, KilledFiveHundredTimes)
{
    constexpr int kills = 500;
    std::mt19937 random(14);
    Place const place;
    Losses losses;
    SessionId last = 0;
    for (int kill = 0; kill < kills; ++kill) {
        QFile::remove(place.other);
        QProcess worker;
        auto arguments = place.worker();
        worker.start(arguments.takeFirst(), arguments);
        ASSERT_TRUE(worker.waitForStarted());
        while (place.progress().running == 0)
            usleep(1000);
        usleep(static_cast<useconds_t>(random() % 400'000));
        worker.kill();
        worker.waitForFinished(-1);
        QtSessionStore store(place.store);
        ASSERT_TRUE(store.isOpen());
        ASSERT_EQ(store.openingProblem(), "");
        auto const unsaved = store.unsavedSession();
        bool const isKept = unsaved && unsaved->id != last;
        losses.add(place.progress(),
            isKept ? store.load(unsaved->id)->measurements : std::vector<StoredMeasurement> {});
        last = unsaved ? unsaved->id : last;
    }
    EXPECT_EQ(losses.finished, 0U);
    EXPECT_LE(losses.mostPoints, 20U);
    EXPECT_EQ(losses.wrong, 0);
    report(std::to_string(kills) + " times killed: " + std::to_string(losses.finished) + " of "
        + std::to_string(losses.recorded) + " finished measurements lost, at most "
        + std::to_string(losses.mostPoints) + " records of a running one");
}

TEST(StoreRuns, EverySystemCallRefusedOnce)
{
    int runs = 0;
    int told = 0;
    int silent = 0;
    int disturbed = 0;
    for (auto const& [call, count] : changingCalls()) {
        for (auto const* error : {"ENOSPC", "EIO"}) {
            Place const place;
            QProcess strace;
            strace.start(QStringLiteral("strace"),
                QStringList {QStringLiteral("-f"), QStringLiteral("-o"),
                    QStringLiteral("/dev/null"), QStringLiteral("-e"),
                    QStringLiteral("inject=%1:error=%2:when=%3")
                        .arg(call, QString::fromLatin1(error))
                        .arg(count)}
                    + place.worker({QStringLiteral("once")}));
            strace.waitForFinished(-1);
            auto const what = call.toStdString() + ' ' + std::to_string(count) + ' ' + error;
            int const times = strace.exitStatus() == QProcess::NormalExit ? strace.exitCode() : 100;
            QtSessionStore store(place.store);
            auto const unsaved = store.unsavedSession();
            bool const isKept = unsaved && unsaved->count == 3
                && std::ranges::all_of(store.load(unsaved->id)->measurements, [](auto const& each) {
                       return each.points.size() == 60 && isAsRecorded(each.points);
                   });
            ++runs;
            told += times == 1 ? 1 : 0;
            disturbed += times > 1 ? 1 : 0;
            silent += times == 0 && !isKept ? 1 : 0;
            EXPECT_LE(times, 1) << what;
            EXPECT_TRUE(isKept || times == 1) << what;
        }
    }
    EXPECT_GT(runs, 40) << "calls that matter must be among them";
    report(std::to_string(runs) + " system calls refused: " + std::to_string(disturbed)
        + " sessions disturbed, " + std::to_string(told) + " times told, once each, "
        + std::to_string(silent) + " silent losses");
}
