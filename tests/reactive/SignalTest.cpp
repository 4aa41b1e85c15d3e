#include "reactive/SignalProducer.h"

#include <gtest/gtest.h>
#include <string>

using namespace tensio;

using AnyEvent = Event<int, int>;

TEST(Signal, DeliversNothingAfterItsFirstEndAlsoBehindTheListenerThatEndsIt)
{
    std::vector<AnyEvent> const ends {FailedEvent<int> {7}, CompletedEvent {}, InterruptedEvent {}};
    for (auto const& end : ends) {
        auto const pipe = Signal<int, int>::pipe();
        std::vector<std::size_t> heard;
        auto const ending = pipe.signal.observeValues([&](int value) {
            if (value == 2)
                pipe.observer.send(end);
        });
        auto const listening
            = pipe.signal.observe([&](auto const& event) { heard.push_back(event.index()); });
        for (int value = 1; value <= 3; ++value)
            pipe.observer.sendValue(value);
        for (auto const& again : ends)
            pipe.observer.send(again);
        EXPECT_EQ(heard, (std::vector {AnyEvent(ValueEvent<int> {1}).index(), end.index()}));
    }
}

TEST(SignalProducer, RunsItsWorkForEachStartBetweenItsHandlers)
{
    std::string log;
    int starts = 0;
    auto const producer = SignalProducer<int, int>([&](auto const& observer) {
        log += "work ";
        ++starts == 1 ? observer.sendInterrupted() : observer.sendCompleted();
    }).onStarted([&] {
          log += "started ";
      }).onInterrupted([&] { log += "handled "; });
    for (int start = 0; start < 2; ++start)
        producer.start([&](auto const& event) {
            log += std::holds_alternative<CompletedEvent>(event) ? "completed " : "interrupted ";
        });
    EXPECT_EQ(log, "started work handled interrupted started work completed ");
}
