#include "platform/qt/MainQueue.h"

#include "platform/qt/QtRunLoop.h"

#include <QTest>

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
    std::string turn() const
    {
        for (int count = 0; count < 10; ++count)
            QCoreApplication::processEvents();
        return log;
    }
};

} // namespace

TEST(MainQueue, HoldsEverythingBackUntilTheLastHoldEnds)
{
    Queue test;
    test.post("a");
    auto first = test.queue.hold();
    auto second = test.queue.hold();
    test.post("b");
    test.turn();
    first.end();
    EXPECT_EQ(test.turn(), "");
    second.end();
    EXPECT_EQ(test.log, "");
    EXPECT_EQ(test.turn(), "ab");
}

TEST(MainQueue, WorkMayRunAnEventLoopAndDestroyTheQueue)
{
    for (bool const holds : {true, false}) {
        Queue test;
        test.queue.post([&] {
            auto const hold = holds ? test.queue.hold() : Subscription();
            test.post("c");
            test.turn();
            test.log += "[closed]";
        });
        test.post("b");
        EXPECT_EQ(test.turn(), holds ? "[closed]bc" : "bc[closed]");
    }
    auto queue = std::make_unique<MainQueue>();
    queue->post([&] { queue.reset(); });
    queue->post([] { ADD_FAILURE() << "delivered by a queue that is gone"; });
    Queue().turn();
    EXPECT_EQ(queue, nullptr);
}

TEST(QtRunLoop, DeliversOneTickForAllThatWereDueDuringAHoldAndNoneOfAnEndedTimer)
{
    MainQueue held;
    MainQueue free;
    QtRunLoop heldLoop(held);
    QtRunLoop freeLoop(free);
    int ticks = 0;
    int watched = 0;
    int once = 0;
    int pauses = 0;
    auto const pause = heldLoop.willPause.signal.observeValues([&](Nothing) { ++pauses; });
    auto hold = held.hold();
    EXPECT_EQ(pauses, 1);
    auto const timer = heldLoop.scheduleRepeating(Seconds(0.001), [&] { ++ticks; });
    auto ended
        = heldLoop.scheduleAfter(Seconds(0.0), [] { ADD_FAILURE() << "fired after its end"; });
    auto const watch = freeLoop.scheduleRepeating(Seconds(0.003), [&] { ++watched; });
    auto const later
        = freeLoop.scheduleAfter(Seconds(0.9), [] { ADD_FAILURE() << "cut to whole seconds"; });
    auto const single = freeLoop.scheduleAfter(Seconds(0.001), [&] { ++once; });
    ASSERT_TRUE(QTest::qWaitFor([&] { return watched >= 5; }));
    EXPECT_EQ(once, 1);
    EXPECT_EQ(ticks, 0);
    ended.end();
    hold.end();
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(ticks, 1);
}
