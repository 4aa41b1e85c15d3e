#include "reactive/SignalProducer.h"

#include <gtest/gtest.h>
#include <string>

using namespace tensio;

namespace {

using Producer = SignalProducer<int, std::string>;

std::string describe(Event<int, std::string> const& event)
{
    if (auto const* value = std::get_if<ValueEvent<int>>(&event))
        return std::to_string(value->value);
    if (auto const* failure = std::get_if<FailedEvent<std::string>>(&event))
        return "failed " + failure->error;
    return std::holds_alternative<CompletedEvent>(event) ? "completed" : "interrupted";
}

} // namespace

TEST(Signal, DeliversNothingAfterTheFirstTerminatingEvent)
{
    using Ending = std::function<void(Observer<int, std::string> const&)>;
    std::vector<std::pair<std::string, Ending>> const endings {
        {"failed broken", [](auto const& observer) { observer.sendFailed("broken"); }},
        {"completed", [](auto const& observer) { observer.sendCompleted(); }},
        {"interrupted", [](auto const& observer) { observer.sendInterrupted(); }},
    };
    for (auto const& [name, end] : endings) {
        auto const pipe = Signal<int, std::string>::pipe();
        std::vector<std::string> events;
        auto const listening
            = pipe.signal.observe([&](auto const& event) { events.push_back(describe(event)); });
        pipe.observer.sendValue(1);
        end(pipe.observer);
        pipe.observer.sendValue(2);
        for (auto const& [otherName, endAgain] : endings)
            endAgain(pipe.observer);
        EXPECT_EQ(events, (std::vector<std::string> {"1", name}));
    }
}

TEST(SignalProducer, RunsItsWorkAnewForEachStartAfterTheStartedHandler)
{
    std::vector<std::string> log;
    auto const producer = Producer([&](auto const& observer) {
        log.emplace_back("work");
        observer.sendValue(7);
        observer.sendCompleted();
    }).onStarted([&] { log.emplace_back("started"); });
    for (int start = 0; start < 2; ++start)
        producer.start([&](auto const& event) { log.push_back(describe(event)); });
    std::vector<std::string> const once {"started", "work", "7", "completed"};
    auto twice = once;
    twice.insert(twice.end(), once.begin(), once.end());
    EXPECT_EQ(log, twice);
}

TEST(SignalProducer, TellsInterruptionFromCompletionAndFailure)
{
    int interruptions = 0;
    std::vector<std::string> events;
    auto const play = [&](std::function<void(Observer<int, std::string>)> work) {
        Producer(std::move(work))
            .onInterrupted([&] { ++interruptions; })
            .start([&](auto const& event) {
                events.push_back(describe(event) + " after " + std::to_string(interruptions));
            });
    };
    play([](auto const& observer) { observer.sendCompleted(); });
    play([](auto const& observer) { observer.sendFailed("broken"); });
    play([](auto const& observer) { observer.sendInterrupted(); });
    EXPECT_EQ(events,
        (std::vector<std::string> {
            "completed after 0", "failed broken after 0", "interrupted after 1"}));
}
