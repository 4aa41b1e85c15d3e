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

TEST(QtRunLoop, DeliversOneTickForAllThatWereDueDuringAHoldAndNoneOfAnEndedTimer)
{
    MainQueue queue;
    QtRunLoop runLoop(queue);
    int ticks = 0;
    int watched = 0;
    auto hold = queue.hold();
    auto const timer = runLoop.scheduleRepeating(Seconds(0.001), [&] { ++ticks; });
    auto ended
        = runLoop.scheduleAfter(Seconds(0.0), [] { ADD_FAILURE() << "fired after its end"; });
    // A timer of Qt's own shows when several ticks must have been due.
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&] { ++watched; });
    watch.start(3);
    ASSERT_TRUE(QTest::qWaitFor([&] { return watched >= 5; }));
    EXPECT_EQ(ticks, 0);
    ended.end();
    hold.end();
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(ticks, 1);
}
