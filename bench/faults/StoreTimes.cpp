#include "Figure.h"
#include "app/PastSessionsWindow.h"
#include "core/NumberText.h"
#include "core/SessionRecorder.h"
#include "platform/qt/QtSessionStore.h"
#include "support/Session.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeView>
#include <QWidget>

#include <algorithm>
#include <gtest/gtest.h>

// What storing costs the main thread, and what many stored sessions cost the start and the list.

using namespace tensio;

namespace {

// Milliseconds.
template<typename Work>
double timeOf(Work const& work)
{
    QElapsedTimer timer;
    timer.start();
    work();
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

double quantile(std::vector<double> times, double share)
{
    std::ranges::sort(times);
    return times[static_cast<std::size_t>(share * static_cast<double>(times.size() - 1))];
}

std::string milliseconds(double time)
{
    return formatFixed(static_cast<float>(time), 2) + " ms";
}

struct Place {
    // Not in memory, as /tmp may be.
    QTemporaryDir folder {QCoreApplication::applicationDirPath() + QStringLiteral("/store-XXXXXX")};
    QString path {folder.filePath(QStringLiteral("sessions.db"))};

    qint64 size() const
    {
        return QFileInfo(path).size() + QFileInfo(path + QStringLiteral("-wal")).size();
    }
};

// 10,000 sessions of 20 measurements of three seconds.
void fill(QString const& path)
{
    SessionDatabase database(path);
    database.change(SessionDatabase::Durability::ProgramEnd, [&] {
        auto const count = QStringLiteral("WITH RECURSIVE n(i) AS "
                                          "(SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) ");
        return database.run(count.arg(10'000)
                   + QStringLiteral("INSERT INTO session (start, name, simulated, count, best) "
                                    "SELECT i, '被験者' || i, 0, 20, 30.0 FROM n"))
            && database.run(count.arg(20)
                + QStringLiteral("INSERT INTO measurement SELECT id, i, 30.0, 30.0, 0, 1 "
                                 "FROM session, n"))
            && database.run(count.arg(3)
                + QStringLiteral("INSERT INTO points SELECT session, number, 20 * i, "
                                 "zeroblob(80) FROM measurement, n"));
    });
}

} // namespace

TEST(StoreTimes, OfTheMainThreadInAnHourAndAtTheEndOfMeasurements)
{
    Place const place;
    Session session;
    QtSessionStore store(place.path);
    SessionRecorder recorder(session.manager, store, session.runLoop, session.clock);
    session.connect();
    std::vector<double> seconds;
    for (int second = 0; second < 3600; ++second) {
        session.receive(std::vector<double>(20, 1.0 + second % 50));
        seconds.push_back(timeOf([&] { session.runLoop.advance(Seconds(1.0)); }));
    }
    session.runLoop.advance(Seconds(2.0));
    std::vector<double> ends;
    for (int press = 0; press < 90; ++press) {
        session.receive(std::vector<double>(20, 30.0));
        session.runLoop.advance(Seconds(1.0));
        ends.push_back(timeOf([&] { session.runLoop.advance(Seconds(1.0)); }));
    }
    auto const finish = timeOf([&] { session.manager.disconnectAction.apply(Nothing {}); });
    EXPECT_EQ(store.unsavedSession()->count, 91);
    EXPECT_LT(quantile(seconds, 0.5), 0.2);
    EXPECT_LT(quantile(seconds, 0.99), 5.0);
    EXPECT_LT(quantile(ends, 0.5), 20.0);
    EXPECT_LT(place.size(), 1'000'000);
    report("a second of recording: median " + milliseconds(quantile(seconds, 0.5)) + ", 99 % "
        + milliseconds(quantile(seconds, 0.99)) + ", worst " + milliseconds(quantile(seconds, 1.0))
        + "; end of a measurement: median " + milliseconds(quantile(ends, 0.5)) + ", worst "
        + milliseconds(quantile(ends, 1.0)) + "; end of the session: " + milliseconds(finish)
        + "; an hour and 90 presses: " + std::to_string(place.size() / 1024) + " KiB");
}

TEST(StoreTimes, WithTenThousandSessions)
{
    Place const place;
    Place const empty;
    fill(place.path);
    auto const start = [](QString const& path) {
        std::vector<double> times;
        for (int run = 0; run < 11; ++run)
            times.push_back(timeOf([&] { QtSessionStore(path).unsavedSession(); }));
        return quantile(times, 0.5);
    };
    auto const longer = start(place.path) - start(empty.path);
    Session session;
    QtSessionStore store(place.path);
    SessionRecorder recorder(session.manager, store, session.runLoop, session.clock);
    QWidget parent;
    std::vector<double> openings;
    for (int run = 0; run < 5; ++run) {
        std::unique_ptr<PastSessionsWindow> window;
        openings.push_back(timeOf([&] {
            window = std::make_unique<PastSessionsWindow>(recorder, store, parent);
            window->show();
            window->grab();
        }));
        EXPECT_EQ(window->findChild<QTreeView*>()->model()->rowCount(), 10'000);
    }
    auto const opening = quantile(openings, 0.5);
    auto const reading = timeOf([&] { store.sessions({}); });
    EXPECT_LT(opening, 200.0);
    EXPECT_LT(longer, 20.0);
    report("10,000 sessions of 20 measurements, " + std::to_string(place.size() >> 20)
        + " MiB: the start takes " + milliseconds(longer)
        + " longer than without, the list opens in " + milliseconds(opening)
        + ", of which it reads for " + milliseconds(reading));
}
