#include "platform/qt/QtSessionStore.h"

#include "platform/qt/QtSaving.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace tensio;

namespace {

struct Place {
    static constexpr Date time {std::chrono::microseconds(5'000'001)};
    QTemporaryDir folder;
    QDir data {folder.filePath("data")};
    QString path {data.filePath("sessions.db")};

    SessionId addSession(std::string const& name, float best = 30.0f)
    {
        QtSessionStore store(path);
        std::vector const points(50, best);
        auto const id = store.begin(
            {time, name, 40.0f, 0.5f, true}, {1, best, 20.0f, time, false, 0, points});
        EXPECT_TRUE(store.write(*id, {1, best, 20.0f, time, true, 50, std::vector {-1.0f}}));
        EXPECT_TRUE(store.write(*id, {2, best - 10.0f, 20.0f, time, true, 0, points}));
        return *id;
    }
    QString filesAside() const { return data.entryList({"sessions.db.*"}).join(' '); }
    void run(std::vector<char const*> const& statements) const
    {
        SessionDatabase database(path);
        for (auto const* statement : statements)
            EXPECT_TRUE(database.run(statement)) << statement;
    }
};

} // namespace

TEST(QtSessionStore, GivesBackWhatWasWrittenAndMarked)
{
    Place place;
    auto const first = place.addSession("Ōta 花子");
    auto const second = place.addSession("鈴木", 50.5f);
    QtSessionStore store(place.path);
    EXPECT_EQ(QtSessionStore(place.path).problem(), StoreProblem::InUse);
    auto const loaded = store.load(first, StoredPoints::Loaded);
    ASSERT_TRUE(loaded && loaded->measurements.size() == 2);
    auto const& [number, best, target, timeStamp, points] = loaded->measurements.front();
    EXPECT_EQ(points.size(), 51U);
    EXPECT_EQ(std::tuple(number, best, target, timeStamp, points.back()),
        std::tuple(1, 30.0f, 20.0f, Place::time, -1.0f));
    auto const [id, start, name, count, highest, isSaved, isSimulated]
        = store.sessions(std::nullopt, 9).sessions.at(0);
    EXPECT_EQ(std::tuple(id, start, name, count, highest, isSaved, isSimulated),
        std::tuple(second, Place::time, "鈴木", 2, 50.5f, false, true));
    EXPECT_EQ(store.unsavedSession().value().id, second);
    EXPECT_TRUE(store.markSaved(second));
    EXPECT_FALSE(store.unsavedSession()) << "only the newest counts";
    EXPECT_TRUE(store.remove({second}));
    EXPECT_EQ(store.unsavedSession().value().id, first);
    EXPECT_TRUE(store.dismiss(first));
    EXPECT_FALSE(store.unsavedSession());
    EXPECT_EQ(
        store.load(first, StoredPoints::Loaded).value().measurements.at(1).points.size(), 50U);
}

TEST(QtSessionStore, IsReadableForTheUserAloneAndKeepsNothingOfWhatIsRemoved)
{
    auto const others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
    for (bool const isOneRemoved : {true, false}) {
        Place place;
        auto const id = place.addSession("Nobody");
        EXPECT_FALSE(
            (QFile::permissions(place.path) | QFile::permissions(place.data.path())) & others);
        std::optional<QtSessionStore> store(place.path);
        EXPECT_TRUE(isOneRemoved ? store->remove({id}) : store->removeAll());
        for (auto const& name : place.data.entryList(QDir::Files)) {
            QFile rest(place.data.filePath(name));
            ASSERT_TRUE(rest.open(QIODevice::ReadOnly));
            EXPECT_FALSE(rest.readAll().contains("Nobody")) << name.toStdString();
        }
        store.reset();
        SessionDatabase database(place.path);
        for (auto const* table : {"session", "measurement", "points"})
            EXPECT_FALSE(database.run(QString("SELECT * FROM ") + table)->next()) << table;
    }
}

TEST(QtSessionStore, ReportsWhyItDoesNotOpenOrBeginsANewFile)
{
    using enum StoreProblem;
    struct {
        std::function<void(Place&)> plant;
        StoreProblem problem;
        char const* filesAside;
    } const rows[] {
        {[](Place& place) { QtFileWriter().writeAtomically(place.path.toStdString(), "garbage"); },
            DamagedSetAside, "sessions.db.damaged"},
        {[](Place& place) { place.run({"DROP TABLE points"}); }, DamagedSetAside,
            "sessions.db.damaged"},
        {[](Place& place) { place.run({"PRAGMA user_version = 2"}); }, NewerSetAside,
            "sessions.db.newer"},
        {[](Place& place) { QFile::remove(place.path) && place.data.mkdir("sessions.db"); },
            NotOpened, ""},
    };
    for (auto const& [plant, problem, filesAside] : rows) {
        Place place;
        place.addSession("花子");
        plant(place);
        QtSessionStore store(place.path);
        EXPECT_EQ(store.problem(), problem);
        EXPECT_EQ(store.isOpen(), problem != NotOpened);
        EXPECT_EQ(store.begin({}, {}).has_value(), store.isOpen());
        EXPECT_EQ(place.filesAside().section('-', 0, 0), filesAside);
    }
}

TEST(QtSessionStore, DoesAWholeChangeOrNothingAndTriesTheNext)
{
    Place place;
    auto const id = place.addSession("花子");
    place.run({"CREATE TRIGGER refuse BEFORE INSERT ON points "
               "WHEN new.first = 20 BEGIN SELECT RAISE(ABORT, ''); END"});
    QtSessionStore store(place.path);
    std::vector const points(40, 60.0f);
    EXPECT_FALSE(store.write(id, {3, 60.0f, 20.0f, {}, true, 0, points}));
    EXPECT_EQ(store.problem(), StoreProblem::NotWritable);
    EXPECT_EQ(store.load(id, StoredPoints::Loaded).value().measurements.size(), 2U);
    EXPECT_TRUE(store.write(id, {3, 40.0f, 20.0f, {}, true, 0, std::span(points).first(20)}));
    EXPECT_EQ(store.load(id, StoredPoints::Loaded).value().summary.best, 40.0f);
}

TEST(QtSessionStore, KeepsSessionsReadableWhenAWriteMeetsDamageOrAFullDisk)
{
    Place place;
    auto const id = place.addSession("花子");
    // The table's page is none of an index.
    place.run({"CREATE INDEX names ON session (name)", "PRAGMA writable_schema = ON",
        "UPDATE sqlite_schema SET rootpage = (SELECT rootpage FROM sqlite_schema WHERE name = "
        "'session') WHERE name = 'names'"});
    {
        QtSessionStore store(place.path);
        EXPECT_FALSE(store.begin({}, {}));
        EXPECT_EQ(store.problem(), StoreProblem::Damaged);
        EXPECT_FALSE(store.dismiss(id)) << "nothing more is written into a damaged file";
        EXPECT_EQ(store.load(id, StoredPoints::Loaded).value().measurements.size(), 2U);
    }
    EXPECT_TRUE(place.filesAside().contains("damaged"));
    SessionDatabase database(place.path);
    database.run("PRAGMA max_page_count = 1");
    database.change(SessionDatabase::Durability::ProgramEnd,
        [&] { return database.run("INSERT INTO session (name) VALUES (zeroblob(100000))"); });
    EXPECT_EQ(database.problem(), StoreProblem::NoSpace);
}
