#include "reactive/Signal.h"

#include <gtest/gtest.h>

using namespace tensio;

TEST(Signal, DeliversNothingAfterItsFirstEndAlsoBehindTheListenerThatEndsIt)
{
    std::vector<Event<int, int>> const ends {
        FailedEvent<int> {7}, CompletedEvent {}, InterruptedEvent {}};
    for (auto const& end : ends) {
        auto const pipe = Signal<int, int>::pipe();
        std::vector<std::size_t> received;
        auto const ending = pipe.signal.observeValues([&](int value) {
            if (value == 2)
                pipe.observer.send(end);
        });
        auto const listening
            = pipe.signal.observe([&](auto const& event) { received.push_back(event.index()); });
        for (int value = 1; value <= 3; ++value)
            pipe.observer.sendValue(value);
        for (auto const& again : ends)
            pipe.observer.send(again);
        EXPECT_EQ(received, (std::vector<std::size_t> {0, end.index()}));
    }
}
