#include "core/SessionArchive.h"
#include "support/FakeSessionStore.h"
#include "support/Session.h"

#include <gtest/gtest.h>
#include <random>

using namespace tensio;

namespace {

using Points = std::vector<float>;

struct Person {
    std::vector<Points> presses;
    bool isSaved = false;
    bool isOpened = false;
    // The window left it, or the program ended, while the store refused: the rest may be lost.
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
class Walk {
public:
    explicit Walk(unsigned seed)
        : m_random(seed)
    {
        kill();
    }

    // What is wrong afterwards.
    std::string step()
    {
        auto const operations = std::to_array({&Walk::connect, &Walk::fail, &Walk::finish,
            &Walk::record, &Walk::record, &Walk::record, &Walk::pause, &Walk::pause, &Walk::refuse,
            &Walk::recover, &Walk::save, &Walk::open, &Walk::remove, &Walk::kill});
        (this->*operations.at(m_random() % operations.size()))();
        for (auto const& [id, session] : m_store.stored) {
            if (auto const fault = faultOf(id, session); !fault.empty())
                return fault + " in session " + std::to_string(id);
        }
        return faultOfProgram();
    }

private:
    bool isMeasuring() const { return m_program->manager.isMeasuring.value(); }
    bool isSettled() const { return !m_isBehind && !isMeasuring(); }

    void connect()
    {
        if (isMeasuring())
            return;
        leave(std::to_string(m_people.size()));
        m_program->connect();
        m_program->manager.username.setValue(m_shown);
        m_people[m_shown];
        EXPECT_EQ(m_program->archive.problem.value(), StoreProblem::None) << "nothing refused yet";
    }
    void fail()
    {
        if (isMeasuring())
            return;
        leave({});
        auto const ports = std::exchange(m_program->ports.ports, {});
        m_program->manager.connectAction.apply(Nothing {});
        m_program->manager.isMeasuring.setValue(false);
        m_program->ports.ports = ports;
    }
    void finish()
    {
        m_isPressing = false;
        if (isMeasuring())
            m_program->manager.disconnectAction.apply(Nothing {});
    }
    void record()
    {
        if (!isMeasuring())
            return;
        auto& presses = m_people[m_shown].presses;
        if (!std::exchange(m_isPressing, true))
            presses.emplace_back();
        m_pressure = m_pressure < 99.0f ? m_pressure + 1.0f : 1.0f;
        presses.back().push_back(m_pressure);
        m_program->receive({static_cast<double>(m_pressure)});
        m_program->runLoop.advance(Seconds(0.5));
    }
    void pause()
    {
        m_isPressing = false;
        m_program->runLoop.advance(Seconds(2.5));
        m_isBehind = m_store.refusals > 0;
    }
    void refuse()
    {
        m_store.refusals = 1'000'000;
        m_isBehind = true;
    }
    void recover() { m_store.refusals = 0; }
    void save()
    {
        if (isMeasuring() || m_program->manager.measurementList.measurements().empty())
            return;
        m_program->saving.answer = "/file.csv";
        m_program->manager.saveCsv();
        m_people[m_shown].isSaved = true;
    }
    void open()
    {
        if (m_store.stored.empty())
            return;
        auto const& [id, session] = pick();
        if (!m_program->archive.open(id))
            return;
        leave(session.summary.name);
        m_people[m_shown].isOpened = m_people[m_shown].isOpened || m_store.refusals == 0;
    }
    void remove()
    {
        if (isMeasuring() || m_store.stored.empty())
            return;
        auto const [id, session] = pick();
        if (m_program->archive.remove({id}) == StoreProblem::None)
            m_people[session.summary.name].isCut = true;
    }
    void kill()
    {
        leave({});
        m_isPressing = false;
        m_program.reset();
        m_store.reason = StoreProblem::None;
        m_program.emplace(m_store);
        m_store.reason = StoreProblem::NoSpace;
    }

    std::pair<SessionId const, StoredSession> const& pick()
    {
        auto const place = m_random() % m_store.stored.size();
        return *std::next(m_store.stored.begin(), static_cast<std::ptrdiff_t>(place));
    }
    void leave(std::string const& next)
    {
        if (auto const left = m_people.find(std::exchange(m_shown, next)); left != m_people.end())
            left->second.isCut = left->second.isCut || m_isBehind;
        m_isBehind = m_store.refusals > 0;
    }

    std::string faultOf(SessionId id, StoredSession const& session)
    {
        auto const& person = m_people[session.summary.name];
        if (session.summary.isSaved && !person.isSaved)
            return "marked but not saved";
        if (isSettled() && person.isSaved && !person.isCut && !session.summary.isSaved)
            return "saved but not marked";
        if (isSettled() && person.isOpened && std::ranges::count(m_store.dismissed, id) == 0)
            return "opened and still offered";
        if (std::ranges::count(m_store.ended, id) > 0
            && storedOf(session.summary.name) != person.presses)
            return "ended without its rest";
        for (std::size_t place = 0; place < session.measurements.size(); ++place) {
            auto const& points = session.measurements[place].points;
            if (place >= person.presses.size()
                || !std::ranges::equal(points,
                    std::span(person.presses[place])
                        .first(std::min(points.size(), person.presses[place].size()))))
                return "another's pressures";
        }
        return {};
    }

    std::string faultOfProgram()
    {
        auto const& archive = m_program->archive;
        auto const person = m_people.find(m_shown);
        bool const isSaved = person != m_people.end() && person->second.isSaved;
        if (isMeasuring() ? archive.canOpen.value()
                          : !archive.canOpen.value() && (isSettled() || isSaved))
            return "can be opened or not";
        if (isSettled() && archive.problem.value() != StoreProblem::None)
            return "a problem that has gone";
        for (auto const& [name, each] : m_people) {
            bool const isDue = isSettled() || (name == m_shown && archive.canOpen.value());
            if (isDue && !each.isCut && !each.isSaved && storedOf(name) != each.presses)
                return "not stored: " + name;
        }
        return {};
    }

    std::vector<Points> storedOf(std::string const& name) const
    {
        std::vector<Points> presses;
        for (auto const& [id, session] : m_store.stored) {
            for (auto const& each : session.measurements) {
                if (session.summary.name == name)
                    presses.push_back(each.points);
            }
        }
        return presses;
    }

    std::minstd_rand m_random;
    FakeSessionStore m_store;
    std::map<std::string, Person> m_people;
    std::string m_shown;
    float m_pressure = 0.0f;
    bool m_isPressing = false;
    // The store has refused, and not had a second since.
    bool m_isBehind = false;
    std::optional<Program> m_program;
};

} // namespace

TEST(SessionArchive, KeepsAndMarksWhatItMustHoweverItIsUsed)
{
    for (unsigned seed = 1; seed <= 20; ++seed) {
        Walk walk(seed);
        for (int step = 0; step < 400; ++step) {
            auto const fault = walk.step();
            ASSERT_EQ(fault, "") << "seed " << seed << ", step " << step;
        }
    }
}
