#include "platform/qt/MainQueue.h"

#include "platform/qt/QtRunLoop.h"

#include <QEventLoop>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>
#include <memory>

using namespace tensio;

namespace {

struct Queue {
    MainQueue queue;
    std::string log;

    void post(std::string const& text)
    {
        queue.post([this, text] { log += text; });
    }
};

void turnEventLoop()
{
    for (int turn = 0; turn < 10; ++turn)
        QCoreApplication::processEvents();
}

} // namespace

TEST(MainQueue, HoldsEverythingBackUntilTheLastHoldEnds)
{
    Queue test;
    test.post("a");
    auto first = test.queue.hold();
    auto second = test.queue.hold();
    test.post("b");
    turnEventLoop();
    first.end();
    turnEventLoop();
    EXPECT_EQ(test.log, "");
    second.end();
    EXPECT_EQ(test.log, "");
    turnEventLoop();
    EXPECT_EQ(test.log, "ab");
}

TEST(MainQueue, WorkMayOpenAPanelWithAnEventLoopOfItsOwn)
{
    for (bool const holds : {true, false}) {
        Queue test;
        test.queue.post([&] {
            auto const hold = holds ? test.queue.hold() : Subscription();
            test.post("c");
            turnEventLoop();
            test.log += "[closed]";
        });
        test.post("b");
        turnEventLoop();
        EXPECT_EQ(test.log, holds ? "[closed]bc" : "bc[closed]");
    }
}

TEST(MainQueue, MayBeDestroyedByItsOwnWork)
{
    auto queue = std::make_unique<MainQueue>();
    queue->post([&] { queue.reset(); });
    queue->post([] { ADD_FAILURE() << "delivered by a queue that is gone"; });
    turnEventLoop();
    EXPECT_EQ(queue, nullptr);
}

TEST(QtRunLoop, MakesUpForTicksMissedDuringAHoldByOne)
{
    MainQueue queue;
    QtRunLoop runLoop(queue);
    int ticks = 0;
    int watched = 0;
    auto hold = queue.hold();
    Subscription timer;
    timer = runLoop.scheduleRepeating(Seconds(0.001), [&] {
        ++ticks;
        timer.end();
    });
    // A timer of Qt's own tells when several ticks must have been due.
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&] { ++watched; });
    watch.start(3);
    ASSERT_TRUE(QTest::qWaitFor([&] { return watched >= 5; }));
    EXPECT_EQ(ticks, 0);
    hold.end();
    turnEventLoop();
    EXPECT_EQ(ticks, 1);
}

TEST(QtRunLoop, AnEndedTimerNeverFiresNotEvenIfItWasDue)
{
    MainQueue queue;
    QtRunLoop runLoop(queue);
    bool wasDue = false;
    auto hold = queue.hold();
    auto timer
        = runLoop.scheduleAfter(Seconds(0.0), [] { ADD_FAILURE() << "fired after its end"; });
    QTimer::singleShot(5, [&] { wasDue = true; });
    ASSERT_TRUE(QTest::qWaitFor([&] { return wasDue; }));
    timer.end();
    hold.end();
    turnEventLoop();
}
