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

    SessionId addSession(std::string const& name, float best = 30.0f, int later = 0) const
    {
        QtSessionStore store(path);
        std::vector const points(50, best);
        auto const id = store.begin({time + std::chrono::seconds(later), name, 40.0f, 0.5f, true},
            {1, best, 20.0f, time, false, 0, points});
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

// All that is in the store, page by page: a line for each session and each of its measurements.
std::vector<std::string> contents(SessionStore& store)
{
    std::vector<std::string> lines;
    SessionPage page;
    std::optional<SessionSummary> last;
    while (page = store.sessions(last, 2), !page.sessions.empty()) {
        for (auto const& session : page.sessions) {
            auto const loaded = store.load(session.id, StoredPoints::Loaded).value();
            lines.push_back(testing::PrintToString(std::tuple(session.start, session.name,
                session.count, session.best, session.isSaved, session.isSimulated, loaded.target,
                loaded.targetPercent, loaded.isComplete)));
            for (auto const& [number, best, target, date, points] : loaded.measurements)
                lines.push_back(testing::PrintToString(std::tuple(number, best, target, date,
                    points.size(), points.empty() ? 0.0f : points.back())));
        }
        last = page.sessions.back();
    }
    EXPECT_TRUE(page.isComplete);
    return lines;
}

void replaceBytes(QString const& path, qint64 place, QByteArray const& bytes)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadWrite) && file.seek(place) && file.write(bytes) > 0);
}

TransferState finish(std::unique_ptr<SessionTransfer> transfer)
{
    double progress = 0.0;
    while (transfer->step() == TransferState::Running)
        EXPECT_GE(transfer->progress(), std::exchange(progress, transfer->progress()));
    return transfer->step();
}

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
        for (auto const* aside : {".damaged-1", ".newer-1", ".newer-1-wal"}) {
            EXPECT_TRUE(isOneRemoved || QFile::copy(place.path, place.path + aside));
        }
        std::optional<QtSessionStore> store(place.path);
        EXPECT_NE(store->sessions(std::nullopt, 1).hasMovedFiles, isOneRemoved);
        EXPECT_TRUE(isOneRemoved ? store->remove({id}) : store->removeAll());
        EXPECT_FALSE(store->sessions(std::nullopt, 1).hasMovedFiles);
        EXPECT_TRUE(store->write(id, {2, 20.0f, 20.0f, {}, true, 0, {}})) << "kept by nobody";
        for (auto const& name : place.data.entryList(QDir::Files)) {
            QFile rest(place.data.filePath(name));
            ASSERT_TRUE(rest.open(QIODevice::ReadOnly));
            EXPECT_FALSE(rest.readAll().contains("Nobody")) << name.toStdString();
        }
        store.reset();
        EXPECT_EQ(place.filesAside(), "");
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
        {[](Place& place) { place.run({"PRAGMA user_version = 3"}); }, NewerSetAside,
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

TEST(QtSessionStore, ListsTheNewestStartFirst)
{
    Place const place;
    place.addSession("later", 30.0f, 1);
    place.addSession("first");
    place.addSession("same time");
    place.addSession("newest", 30.0f, 2);
    QtSessionStore store(place.path);
    std::string names;
    std::optional<SessionSummary> last;
    for (auto page = store.sessions(last, 1); !page.sessions.empty();
         page = store.sessions(last, 1)) {
        last = page.sessions.at(0);
        names += last->name + ", ";
    }
    EXPECT_EQ(names, "newest, later, same time, first, ");
    EXPECT_EQ(store.unsavedSession().value().name, "newest");
}

TEST(QtSessionStore, KeepsWhatAnOlderVersionHasStored)
{
    Place const place;
    place.data.mkpath(".");
    ASSERT_TRUE(QFile::copy(TENSIO_OLD_STORE, place.path));
    QtSessionStore store(place.path);
    EXPECT_EQ(store.problem(), StoreProblem::None);
    auto const sessions = store.sessions(std::nullopt, 9).sessions;
    ASSERT_EQ(sessions.size(), 2U) << "the one without a measurement was never listed";
    EXPECT_EQ(sessions[0].id, 3);
    EXPECT_EQ(sessions[1].name, "Ōta 花子");
    EXPECT_EQ(store.load(1, StoredPoints::Loaded).value().measurements.at(1).points.back(), -1.0f);
    auto const before = contents(store);
    EXPECT_EQ(finish(store.restore(TENSIO_OLD_STORE)), TransferState::Done);
    EXPECT_EQ(contents(store), before) << "they are there already";
}

TEST(QtSessionStore, LosesOnlyWhatLiesOnADamagedPage)
{
    Place const sound;
    sound.run({"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 150) "
               "INSERT INTO session (start, name, count, best, identity) "
               "SELECT i, 'somebody ' || i, 1, 30.0, hex(randomblob(16)) FROM n",
        "INSERT INTO measurement SELECT id, 1, 30.0, 30.0, 0, 1 FROM session",
        "INSERT INTO points SELECT id, 1, 0, zeroblob(80) FROM session"});
    constexpr int pageSize = 4096;
    auto const pages = QFileInfo(sound.path).size() / pageSize;
    int damagedRoots = 0;
    // The first page tells what the tables are.
    for (int page = 1; page < pages; ++page) {
        Place const place;
        place.data.mkpath(".");
        ASSERT_TRUE(QFile::copy(sound.path, place.path));
        replaceBytes(place.path, page * pageSize, QByteArray(pageSize, '\xff'));
        for (int start = 0; start < 2; ++start) {
            QtSessionStore store(place.path);
            auto const found = store.sessions(std::nullopt, 1000);
            EXPECT_TRUE(found.isComplete || start == 0) << page;
            auto const whole = std::ranges::count_if(found.sessions, [&](auto const& session) {
                return store.load(session.id, StoredPoints::Loaded).value().isComplete;
            });
            EXPECT_TRUE(start == 0 || found.sessions.size() == 150) << page;
            damagedRoots += start == 1 && whole < 75 ? 1 : 0;
        }
    }
    EXPECT_GT(pages, 15);
    EXPECT_EQ(damagedRoots, 2) << "of measurements and of points";
}

TEST(QtSessionStore, GoesOnInAnotherFileWhenItsOwnHasVanished)
{
    for (auto const& take : std::vector<std::function<bool(Place const&)>> {
             [](Place const& place) { return QFile::remove(place.path); },
             [](Place const& place) { return QFile::resize(place.path, 0); },
             [](Place const& place) {
                 return QDir().rename(place.data.path(), place.folder.filePath("other"));
             }}) {
        Place const place;
        auto const id = place.addSession("before");
        {
            QtSessionStore store(place.path);
            EXPECT_TRUE(take(place));
            EXPECT_FALSE(store.begin({}, {}));
            EXPECT_EQ(store.problem(), StoreProblem::Vanished);
            EXPECT_GT(store.begin({Place::time, "after", 30.0f, 1.0f, false}, {}).value(), id);
        }
        EXPECT_EQ(
            QtSessionStore(place.path).sessions(std::nullopt, 1).sessions.at(0).name, "after");
    }
}

TEST(QtSessionStore, ReadsWhatItCannotWrite)
{
    Place const place;
    auto const id = place.addSession("花子");
    // No journal can be made, as in a folder that is read-only.
    place.data.mkdir("sessions.db-wal");
    QtSessionStore store(place.path);
    EXPECT_EQ(store.problem(), StoreProblem::NotWritable);
    EXPECT_EQ(store.load(id, StoredPoints::Loaded).value().measurements.size(), 2U);
    EXPECT_FALSE(store.begin({}, {}) || store.remove({id}) || store.removeAll());
    EXPECT_EQ(store.sessions(std::nullopt, 9).sessions.size(), 1U);
}

TEST(QtSessionStore, MovesWhatItWritesIntoTheFileOnlyWhenTold)
{
    Place const place;
    auto const id = place.addSession("花子");
    auto const size = QFileInfo(place.path).size();
    QtSessionStore store(place.path);
    std::vector const points(20, 30.0f);
    for (std::size_t part = 0; part < 400; ++part)
        EXPECT_TRUE(store.write(id, {3, 30.0f, 20.0f, {}, false, part * 20, points}));
    EXPECT_TRUE(store.end(id, {}));
    EXPECT_EQ(QFileInfo(place.path).size(), size);
    store.checkpoint();
    EXPECT_GT(QFileInfo(place.path).size(), size);
    EXPECT_EQ(QFileInfo(place.path + "-wal").size(), 0);
}

TEST(QtSessionStore, CopiesItsSessionsToABackupAndBack)
{
    Place const place;
    Place const other;
    place.addSession("花子", 30.0f, 1);
    auto const path = place.folder.filePath("バックアップ.db").toStdString();
    QtFileWriter().writeAtomically(path, "an older one");
    QtSessionStore store(place.path);
    EXPECT_TRUE(store.markSaved(1));
    EXPECT_EQ(finish(store.backUp(path)), TransferState::Done);
    EXPECT_EQ(
        QFile::permissions(QString::fromStdString(path)) & (QFile::ReadGroup | QFile::ReadOther),
        0);
    other.addSession("Ōta", 40.0f);
    QtSessionStore restored(other.path);
    auto const before = contents(restored);
    {
        auto const cancelled = restored.restore(path);
        EXPECT_EQ(cancelled->step(), TransferState::Running);
        EXPECT_FALSE(restored.markSaved(1)) << "it would be part of the restore";
    }
    EXPECT_EQ(contents(restored), before);
    for (int run = 0; run < 2; ++run) {
        auto const transfer = restored.restore(path);
        while (transfer->step() == TransferState::Running) { }
        EXPECT_EQ(transfer->count(), 1 - run);
    }
    auto expected = contents(store);
    expected.insert(expected.end(), before.begin(), before.end());
    EXPECT_EQ(contents(restored), expected);
    EXPECT_TRUE(restored.markSaved(1));
}

TEST(QtSessionStore, LeavesEverythingAsItWasWhenACopyIsNotPossible)
{
    using enum TransferState;
    Place const place;
    place.addSession("花子");
    auto const path = place.folder.filePath("backup").toStdString();
    QtSessionStore store(place.path);
    EXPECT_EQ(finish(store.backUp(place.path.toStdString())), NotWritable);
    EXPECT_EQ(finish(store.backUp(path + "/missing")), NotWritable);
    EXPECT_EQ(store.backUp(path)->step(), Running);
    EXPECT_FALSE(QFile::exists(QString::fromStdString(path)));
    EXPECT_EQ(
        place.folder.path().isEmpty() ? 0 : QDir(place.folder.path()).entryList(QDir::Files).size(),
        0);
    struct {
        std::function<void(Place&)> plant;
        TransferState state;
    } const files[] {
        {[](Place& file) { QFile::remove(file.path); }, NotABackup},
        {[](Place& file) { QFile::resize(file.path, 0); }, NotABackup},
        {[](Place& file) { replaceBytes(file.path, 0, "garbage"); }, NotABackup},
        {[](Place& file) { file.run({"DROP TABLE points"}); }, NotABackup},
        {[](Place& file) { QFile::resize(file.path, QFileInfo(file.path).size() / 2); },
            NotABackup},
        {[](Place& file) { file.run({"PRAGMA user_version = 3"}); }, Newer},
    };
    auto const before = contents(store);
    for (auto const& [plant, state] : files) {
        Place file;
        file.addSession("鈴木");
        plant(file);
        EXPECT_EQ(finish(store.restore(file.path.toStdString())), state);
        EXPECT_EQ(contents(store), before);
    }
    EXPECT_TRUE(store.markSaved(1)) << "nothing of all this is left";
}
