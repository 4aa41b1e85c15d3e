#include "platform/qt/QtSessionStore.h"

#include "platform/qt/QtSaving.h"
#include "support/FullDisk.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <filesystem>
#include <gtest/gtest.h>

using namespace tensio;

namespace {

constexpr auto forOthers
    = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;

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

// All that is in the store, page by page, whatever the ids.
std::vector<StoredSession> contents(SessionStore& store)
{
    std::vector<StoredSession> all;
    SessionPage page;
    std::optional<SessionSummary> last;
    while (page = store.sessions(last, 1), !page.sessions.empty()) {
        last = page.sessions.at(0);
        all.push_back(store.load(last->id, StoredPoints::Loaded).value());
        EXPECT_EQ(all.back().summary, last);
        all.back().summary.id = 0;
    }
    EXPECT_TRUE(page.isComplete);
    return all;
}

TransferState finish(std::unique_ptr<SessionTransfer> transfer)
{
    double progress = 0.0;
    auto state = TransferState::Running;
    while ((state = transfer->step()) == TransferState::Running)
        EXPECT_GE(transfer->progress(), std::exchange(progress, transfer->progress()));
    return state;
}

} // namespace

TEST(QtSessionStore, GivesBackWhatWasWrittenAndMarked)
{
    Place place;
    auto const first = place.addSession("Ōta 花子");
    auto const second = place.addSession("鈴木", 50.5f);
    QtSessionStore store(place.path);
    EXPECT_EQ(QtSessionStore(place.path).problem(), StoreProblem::InUse);
    EXPECT_EQ(store.sessions(std::nullopt, 9).sessions.at(0).id, second);
    EXPECT_EQ(contents(store).size(), 2U) << "both started at once";
    std::vector points(50, 30.0f);
    StoredMeasurement const last {2, 20.0f, 20.0f, Place::time, points};
    points.push_back(-1.0f);
    StoredSession expected {{first, Place::time, "Ōta 花子", 2, 30.0f, false, true},
        {{1, 30.0f, 20.0f, Place::time, points}, last}, 40.0f, 0.5f, std::nullopt, true};
    EXPECT_EQ(store.load(first, StoredPoints::Loaded), expected);
    EXPECT_TRUE(store.end(first, {Place::time, 45.0f, 0.8f}));
    std::tie(expected.end, expected.target, expected.targetPercent)
        = std::tuple(Place::time, 45.0f, 0.8f);
    EXPECT_EQ(store.unsavedSession().value().id, second);
    EXPECT_TRUE(store.markSaved(second));
    EXPECT_FALSE(store.unsavedSession()) << "only the newest counts";
    EXPECT_TRUE(store.remove({second}));
    EXPECT_EQ(store.unsavedSession().value().id, first);
    EXPECT_TRUE(store.dismiss(first));
    EXPECT_FALSE(store.unsavedSession());
    EXPECT_EQ(store.load(first, StoredPoints::Loaded), expected);
}

TEST(QtSessionStore, IsReadableForTheUserAloneAndKeepsNothingOfWhatIsRemoved)
{
    for (bool const isOneRemoved : {true, false}) {
        Place place;
        auto const id = place.addSession("Nobody");
        EXPECT_FALSE(
            (QFile::permissions(place.path) | QFile::permissions(place.data.path())) & forOthers);
        EXPECT_TRUE(QFile::copy(place.path, place.path + ".deleted-1")) << "as a kill leaves it";
        for (auto const* aside : {".damaged-1", ".newer-1", ".newer-1-wal"})
            EXPECT_TRUE(isOneRemoved || QFile::copy(place.path, place.path + aside));
        std::optional<QtSessionStore> store(place.path);
        EXPECT_TRUE(isOneRemoved ? store->remove({id}) : store->removeAll());
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
            EXPECT_FALSE(database.query(QString("SELECT * FROM ") + table).next()) << table;
    }
}

TEST(QtSessionStore, ReportsWhyItDoesNotOpenOrRestoreAFile)
{
    using enum StoreProblem;
    struct {
        std::function<void(Place&)> plant;
        StoreProblem problem;
        // Whose session.
        QString kept;
        char const* aside = "sessions.db.damaged";
    } const rows[] {
        {[](Place& place) { QtFileWriter().writeAtomically(place.path.toStdString(), "garbage"); },
            DamagedSetAside, ""},
        {[](Place& place) { place.run({"DROP TABLE points"}); }, DamagedSetAside, "花子"},
        {[](Place& place) {
             place.run({"PRAGMA foreign_keys = OFF", "DROP TABLE session"});
         },
            DamagedSetAside, "氏名・装置不明 1"},
        {[](Place& place) { QFile::resize(place.path, 7000); }, DamagedSetAside, ""},
        {[](Place& place) {
             // As the end of the latest run left it.
             QFile::rename(place.path, place.path + ".damaged-1");
             QtFileWriter().writeAtomically(place.path.toStdString() + ".damaged-1-wal", "");
         },
            DamagedSetAside, "花子"},
        {[](Place& place) { place.run({"PRAGMA user_version = 3"}); }, NewerSetAside, "",
            "sessions.db.newer"},
        {[](Place& place) { QFile::remove(place.path) && place.data.mkdir("sessions.db"); },
            NotOpened, "", ""},
    };
    Place const sound;
    sound.addSession("鈴木");
    QtSessionStore other(sound.path);
    auto const before = contents(other);
    for (auto const& [plant, problem, kept, aside] : rows) {
        Place place;
        place.addSession("花子");
        plant(place);
        EXPECT_EQ(finish(other.restore(place.path.toStdString())),
            problem == NewerSetAside ? TransferState::Newer : TransferState::Unreadable);
        EXPECT_EQ(contents(other), before);
        QtSessionStore store(place.path);
        EXPECT_EQ(store.problem(), problem);
        EXPECT_EQ(store.isOpen(), problem != NotOpened);
        QString names;
        for (auto const& session : store.sessions(std::nullopt, 9).sessions)
            names += QString::fromStdString(session.name);
        EXPECT_EQ(names, kept);
        EXPECT_EQ(store.begin({}, {}).has_value(), store.isOpen());
        EXPECT_EQ(place.filesAside().section('-', 0, 0), aside);
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

TEST(QtSessionStore, KeepsSessionsReadableWhenAWriteMeetsDamage)
{
    Place place;
    auto const id = place.addSession("花子");
    auto const curveless = place.addSession("太郎");
    // The table's page is none of an index.
    place.run({"UPDATE session SET count = 2147483647 WHERE id = 1",
        "DELETE FROM points WHERE session = 2 AND number = 2",
        "CREATE INDEX names ON session (name)", "PRAGMA writable_schema = ON",
        ("UPDATE sqlite_schema SET rootpage = (SELECT rootpage FROM sqlite_schema WHERE name = "
         "'session') WHERE name = 'names'")});
    {
        QtSessionStore store(place.path);
        EXPECT_FALSE(store.begin({}, {}));
        EXPECT_EQ(store.problem(), StoreProblem::Damaged);
        EXPECT_FALSE(store.dismiss(id)) << "nothing more is written into a damaged file";
        auto const loaded = store.load(id, StoredPoints::Loaded).value();
        EXPECT_EQ(std::pair(loaded.measurements.size(), loaded.isComplete), std::pair(2UL, false));
        EXPECT_FALSE(store.load(curveless, StoredPoints::Loaded).value().isComplete);
    }
    EXPECT_TRUE(place.filesAside().contains("damaged"));
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
    EXPECT_EQ(sessions[1].name, "Ōta 花子");
    EXPECT_EQ(store.load(1, StoredPoints::Loaded).value().measurements.at(1).points.back(), -1.0f);
    auto const before = contents(store);
    EXPECT_EQ(finish(store.restore(TENSIO_OLD_STORE)), TransferState::Done);
    EXPECT_EQ(contents(store), before) << "they are there already";
}

TEST(QtSessionStore, GoesOnInAnotherFileWhenItsOwnHasVanished)
{
    Place const other;
    other.addSession("other");
    for (std::string const fate : {"folder gone", "emptied", "replaced"}) {
        Place const place;
        auto const id = place.addSession("before");
        QtSessionStore store(place.path);
        EXPECT_TRUE(store.markSaved(id)) << "in the journal";
        if (fate == "folder gone")
            QDir().rename(place.data.path(), place.folder.filePath("other"));
        else if (fate == "emptied")
            QFile::resize(place.path, 0);
        else
            std::filesystem::rename(other.path.toStdString(), place.path.toStdString());
        EXPECT_FALSE(store.begin({}, {}));
        EXPECT_EQ(store.problem(), StoreProblem::Vanished);
        EXPECT_GT(store.begin({{}, "after", 30.0f, 1.0f, false}, {}).value(), id);
        EXPECT_EQ(store.sessions(std::nullopt, 9).sessions.at(0).name,
            fate == "replaced" ? "other" : "after");
        EXPECT_TRUE(QFile::exists(place.path));
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
}

TEST(QtSessionStore, CopiesItsSessionsToABackupAndBackAndListsTheNewestStartFirst)
{
    Place const place;
    Place const other;
    place.addSession("花子", 30.0f, 1);
    other.addSession("Ōta", 40.0f, 2);
    auto const path = place.folder.filePath("バックアップ.db").toStdString();
    QtSessionStore store(place.path);
    EXPECT_TRUE(store.markSaved(1));
    EXPECT_TRUE(store.end(1, {Place::time, 45.0f, 0.8f}));
    EXPECT_EQ(store.backUp(path)->step(), TransferState::Running);
    EXPECT_EQ(QDir(place.folder.path()).entryList(QDir::Files), QStringList()) << "cancelled";
    EXPECT_EQ(finish(store.backUp(path + "/missing")), TransferState::NotWritable);
    EXPECT_EQ(finish(store.backUp(place.path.toStdString())), TransferState::NotWritable);
    QtFileWriter().writeAtomically(path, "an older one");
    auto unflushed = store.backUp(path);
    EXPECT_EQ(unflushed->step(), TransferState::Running);
    QDir const folder(place.folder.path());
    auto const part = folder.filePath(folder.entryList({"*.db.*"}, QDir::Files).value(0));
    EXPECT_TRUE(QFile::remove(part) && QFile::link("/nowhere", part));
    EXPECT_EQ(finish(std::move(unflushed)), TransferState::NotWritable) << "not on the disk";
    EXPECT_EQ(finish(store.backUp(path)), TransferState::Done);
    {
        QtSessionStore backup(QString::fromStdString(path));
        EXPECT_EQ(contents(backup), contents(store));
    }
    EXPECT_FALSE(QFile::permissions(QString::fromStdString(path)) & forOthers);
    QtSessionStore restored(other.path);
    auto const before = contents(restored);
    {
        auto const cancelled = restored.restore(path);
        while (cancelled->count() == 0)
            ASSERT_EQ(cancelled->step(), TransferState::Running);
        EXPECT_FALSE(restored.markSaved(1)) << "it would be part of the restore";
    }
    EXPECT_EQ(contents(restored), before);
    auto expected = before;
    expected.push_back(contents(store).at(0));
    for (int run = 0; run < 2; ++run) {
        EXPECT_EQ(finish(restored.restore(path)), TransferState::Done);
        EXPECT_EQ(contents(restored), expected) << "none of them twice";
    }
    EXPECT_EQ(restored.unsavedSession().value().id, 1);
    EXPECT_TRUE(restored.markSaved(1));
}

TEST(QtSessionStore, KeepsNothingOfARestoreThatTheDiskRefusesInTheMiddle)
{
    Place const from;
    auto const backup = from.folder.filePath("backup").toStdString();
    // More than SQLite keeps in memory.
    std::vector const points(300'000, 30.0f);
    QtSessionStore other(from.path);
    auto const another = other.begin({{}, "花子"}, {1, 30.0f, 20.0f, {}, true, 0, points});
    EXPECT_TRUE(other.write(*another, {2, 30.0f, 20.0f, {}, true, 0, points}));
    EXPECT_EQ(finish(other.backUp(backup)), TransferState::Done);
    Place const place;
    QtSessionStore store(place.path);
    limitFileSize(1'000'000);
    auto const end = finish(store.restore(backup));
    limitFileSize(RLIM_INFINITY);
    EXPECT_EQ(end, TransferState::NotWritable);
    auto const id = store.begin({{}, "太郎"}, {1, 9.0f, 20.0f, {}, true, 0, std::vector {9.0f}});
    EXPECT_EQ(store.load(*id, StoredPoints::Loaded).value().measurements.size(), 1U)
        << "none of another person";
}
