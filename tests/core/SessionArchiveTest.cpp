#include "core/SessionArchive.h"

#include "support/FakeSessionStore.h"
#include "support/Session.h"

#include <gtest/gtest.h>
#include <random>

using namespace tensio;

namespace {

using Points = std::vector<float>;

struct Person {
    std::vector<std::vector<float>> presses;
    bool isSaved = false;
    bool isOpened = false;
    // The window left it while the store refused, or it was removed: the rest may be lost.
    bool isCut = false;
};

struct Recorded : Session {
    SessionArchive archive;

    explicit Recorded(FakeSessionStore& store)
        : archive(manager, store, runLoop, clock)
    {
    }
};

// A program that is used at random, and killed and started again on the same disk.
struct Walk {
    FakeSessionStore store;
    std::map<std::string, Person> people;
    std::string shown;
    float pressure = 0.0f;
    bool isPressing = false;
    // The store has refused, and not had a second since.
    bool isBehind = false;
    std::optional<Recorded> program;

    Walk() { kill(); }

    bool isMeasuring() const { return program->manager.isMeasuring.value(); }
    void leave(std::string const& next)
    {
        if (auto const left = people.find(std::exchange(shown, next)); left != people.end())
            left->second.isCut = left->second.isCut || isBehind;
        isBehind = store.refusals > 0;
    }

    void connect(bool isPluggedIn)
    {
        leave(isPluggedIn ? std::to_string(people.size()) : "");
        auto const ports = std::exchange(program->ports.ports, {});
        program->ports.ports = isPluggedIn ? ports : decltype(ports) {};
        program->manager.connectAction.apply(Nothing {});
        program->ports.ports = ports;
        EXPECT_EQ(program->archive.problem.value(), StoreProblem::None) << "nothing refused yet";
        if (isPluggedIn) {
            program->port->delegate->serialPortWasOpened();
            program->manager.username.setValue(shown);
            people[shown];
        } else {
            program->manager.isMeasuring.setValue(false);
        }
    }
    void record()
    {
        auto& presses = people[shown].presses;
        if (!std::exchange(isPressing, true))
            presses.emplace_back();
        pressure = pressure < 99.0f ? pressure + 1.0f : 1.0f;
        presses.back().push_back(pressure);
        program->receive({static_cast<double>(pressure)});
        program->runLoop.advance(Seconds(0.5));
    }
    void pause()
    {
        isPressing = false;
        program->runLoop.advance(Seconds(2.5));
        isBehind = store.refusals > 0;
    }
    void save()
    {
        program->saving.answer = "/file.csv";
        program->manager.saveCsv();
        people[shown].isSaved = true;
    }
    void open(StoredSession const& session)
    {
        if (!program->archive.open(session.summary.id))
            return;
        leave(session.summary.name);
        people[shown].isOpened = people[shown].isOpened || store.refusals == 0;
    }
    void remove(StoredSession const& session)
    {
        if (program->archive.remove({session.summary.id}) == StoreProblem::None)
            people[session.summary.name].isCut = true;
    }
    void kill()
    {
        leave({});
        isPressing = false;
        program.reset();
        store.reason = StoreProblem::None;
        program.emplace(store);
        store.reason = StoreProblem::NoSpace;
    }

    void step(std::minstd_rand& random)
    {
        auto const operation = random() % 12;
        auto const place = static_cast<std::ptrdiff_t>(random() % (store.stored.size() + 1));
        auto const chosen = std::next(store.stored.begin(), place);
        if (operation == 0)
            store.refusals = 1'000'000;
        isBehind = isBehind || store.refusals > 0;
        if (operation == 1 || operation == 2)
            store.refusals = 0;
        if (operation == 2 || operation == 3)
            pause();
        if (operation == 11)
            kill();
        if (isMeasuring() && operation == 4) {
            isPressing = false;
            program->finish();
        } else if (isMeasuring() && operation > 4) {
            record();
        } else if (operation == 4 || operation == 5) {
            connect(operation == 4);
        } else if (operation == 6 && !program->manager.measurementList.measurements().empty()) {
            save();
        } else if (operation > 6 && chosen != store.stored.end()) {
            auto const session = chosen->second;
            operation == 7 ? remove(session) : open(session);
        }
    }

    void check()
    {
        bool const isSettled = !isBehind && !isMeasuring();
        bool const canOpen = program->archive.canOpen.value();
        bool const isSaved = people.contains(shown) && people[shown].isSaved;
        EXPECT_FALSE(isMeasuring() ? canOpen : (isSettled || isSaved) && !canOpen);
        EXPECT_TRUE(!isSettled || program->archive.problem.value() == StoreProblem::None);
        std::map<std::string, std::vector<std::vector<float>>> stored;
        for (auto const& [id, session] : store.stored) {
            auto const& person = people[session.summary.name];
            auto& presses = stored[session.summary.name];
            presses.clear();
            for (auto const& each : session.measurements)
                presses.push_back(each.points);
            EXPECT_FALSE(session.summary.isSaved && !person.isSaved) << "marked though not saved";
            EXPECT_FALSE(isSettled && person.isSaved && !person.isCut && !session.summary.isSaved);
            EXPECT_FALSE(
                isSettled && person.isOpened && std::ranges::count(store.dismissed, id) == 0);
            EXPECT_FALSE(session.end && presses != person.presses);
        }
        for (auto const& [name, person] : people) {
            bool const isDue = isSettled || (name == shown && canOpen);
            if (isDue && !person.isCut && !person.isSaved) {
                EXPECT_EQ(stored[name], person.presses) << name;
            }
        }
    }
};

} // namespace

TEST(SessionArchive, WritesAFinishedMeasurementAtOnceAndARunningOneEverySecond)
{
    FakeSessionStore store;
    Recorded session(store);
    session.port->isSimulator = true;
    session.connect(40.0f);
    session.manager.changeTargetPressurePercentAction.apply(0.5f);
    session.press({0.0, -3.0});
    EXPECT_TRUE(store.stored.empty()) << "nothing above 0 is no measurement";
    session.receive({20.0, 35.0});
    session.clock.date += std::chrono::minutes(1);
    session.runLoop.advance(Seconds(2.5));
    EXPECT_EQ(store.checkpoints, 1);
    auto const stored
        = [&](std::size_t index) { return store.stored.at(1).measurements.at(index); };
    EXPECT_EQ(stored(0).points, (Points {0.0f, -3.0f, 20.0f, 35.0f}));
    EXPECT_EQ(stored(0).timeStamp, session.clock.date);
    session.receive({10.0});
    session.runLoop.advance(Seconds(1.0));
    session.receive({11.0, 12.0});
    session.runLoop.advance(Seconds(0.9));
    session.receive({13.0});
    EXPECT_EQ(stored(1).points, Points {10.0f}) << "less than a second is missing";
    session.runLoop.advance(Seconds(0.2));
    EXPECT_EQ(stored(1).points, (Points {10.0f, 11.0f, 12.0f, 13.0f}));
    EXPECT_EQ(stored(1).target, 20.0f) << "50 % of 40";
    session.manager.sliceOfMeasurements.setValue(session.manager.sliceOfMeasurements.value());
    EXPECT_EQ(store.checkpoints, 1) << "a turned page waits for no disk";
    session.receive(std::vector(1300, 9.0));
    session.runLoop.advance(Seconds(1.0));
    EXPECT_EQ(stored(1).points.size(), 1304U);
    EXPECT_EQ(store.longestPart, 1200U) << "a write must stay short";
    EXPECT_TRUE(store.stored.at(1).summary.isSimulated);
}

TEST(SessionArchive, OffersAgainWhatTheStoreRefusedAndReportsItOnce)
{
    FakeSessionStore store;
    Recorded session(store);
    std::vector<StoreProblem> problems;
    auto const observing = session.archive.problem.observeChanges(
        [&](auto problem) { problems.push_back(problem); });
    session.connect();
    store.reason = StoreProblem::NoSpace;
    store.refusals = 100;
    session.receive({10.0});
    session.runLoop.advance(Seconds(1.0));
    for (int press = 0; press < 9; ++press)
        session.press({20.0});
    session.receive({30.0});
    EXPECT_EQ(problems, std::vector {StoreProblem::NoSpace});
    store.refusals = 0;
    session.runLoop.advance(Seconds(0.9));
    EXPECT_EQ(store.stored.at(1).summary.count, 4) << "a backlog must not stop the display";
    store.refusals = 100;
    session.finish();
    auto const end = std::exchange(session.clock.date, session.clock.date + std::chrono::hours(1));
    EXPECT_FALSE(session.archive.open(1)) << "what is not stored yet would be lost";
    store.refusals = 0;
    session.runLoop.advance(Seconds(1.0));
    EXPECT_EQ(store.stored.at(1).end, end) << "it ended in a press";
    EXPECT_EQ(problems.size(), 4U);
    EXPECT_EQ(problems.back(), StoreProblem::None);
    session.connect();
    store.reason = StoreProblem::Vanished;
    store.refusals = 1;
    session.press({20.0});
    session.finish();
    EXPECT_TRUE(store.stored.contains(2)) << "the store has gone on";
    EXPECT_EQ(session.archive.problem.value(), StoreProblem::Vanished) << "to be read";
    store.refusals = 3;
    EXPECT_TRUE(session.archive.open(1) && session.archive.open(2));
    session.runLoop.advance(Seconds(2.0));
    EXPECT_EQ(store.dismissed, (std::vector<SessionId> {1, 2}));
}

TEST(SessionArchive, KeepsAndMarksWhatItMustHoweverItIsUsed)
{
    for (unsigned seed = 1; seed <= 40; ++seed) {
        std::minstd_rand random(seed);
        Walk walk;
        for (int step = 0; step < 400 && !testing::Test::HasFailure(); ++step) {
            walk.step(random);
            walk.check();
        }
        ASSERT_FALSE(testing::Test::HasFailure()) << "seed " << seed;
    }
}
