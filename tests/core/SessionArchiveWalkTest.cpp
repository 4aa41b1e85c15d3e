#include "core/SessionArchive.h"
#include "support/FakeSessionStore.h"
#include "support/Session.h"

#include <gtest/gtest.h>
#include <random>

using namespace tensio;

namespace {

struct Person {
    std::vector<std::vector<float>> presses;
    bool isSaved = false;
    bool isOpened = false;
    // The window left it while the store refused, or it was removed: the rest may be lost.
    bool isCut = false;
};

struct Program : Session {
    SessionArchive archive;

    explicit Program(FakeSessionStore& store)
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
    std::optional<Program> program;

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
