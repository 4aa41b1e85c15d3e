#include "platform/qt/QtSessionStore.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace tensio;

namespace {

struct Place {
    QTemporaryDir folder;
    QDir data {folder.filePath("data")};
    QString path {data.filePath("sessions.db")};

    SessionId addSession(std::string const& name, float best = 30.0f)
    {
        QtSessionStore store(path);
        auto const id = store.begin({Date(std::chrono::seconds(5)), name, 40.0f, 0.5f, true});
        std::vector const points(50, best);
        EXPECT_TRUE(store.write(id.value(), {1, best, 20.0f, {}, false, 0, points}));
        EXPECT_TRUE(store.write(*id, {1, best, 20.0f, {}, true, 50, std::vector {-1.0f}}));
        EXPECT_TRUE(store.write(*id, {2, best - 10.0f, 20.0f, {}, true, 0, points}));
        return *id;
    }
    void spoil(QByteArray const& bytes, qint64 from) const
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.seek(from));
        file.write(bytes);
    }
};

} // namespace

TEST(QtSessionStore, GivesBackWhatWasWrittenAndMarked)
{
    Place place;
    auto const first = place.addSession("Yamada 花子");
    auto const second = place.addSession("鈴木", 50.5f);
    QtSessionStore store(place.path);
    auto const loaded = store.load(first);
    ASSERT_TRUE(loaded && loaded->measurements.size() == 2);
    auto const& [number, best, target, timeStamp, points] = loaded->measurements.front();
    EXPECT_EQ(points.size(), 51U);
    EXPECT_EQ(std::tuple(number, best, target, points.back()), std::tuple(1, 30.0f, 20.0f, -1.0f));
    auto const [id, start, name, count, highest, isSaved, isSimulated] = store.sessions("").at(0);
    EXPECT_EQ(std::tuple(id, name, count, highest, isSaved, isSimulated),
        std::tuple(second, "鈴木", 2, 50.5f, false, true));
    EXPECT_EQ(start, Date(std::chrono::seconds(5)));
    EXPECT_EQ(store.sessions("yama").size(), 1U);
    EXPECT_EQ(store.unsavedSession().value().id, second);
    EXPECT_TRUE(store.markSaved(second));
    EXPECT_FALSE(store.unsavedSession()) << "only the newest counts";
    EXPECT_TRUE(store.remove(second));
    EXPECT_EQ(store.unsavedSession().value().id, first);
    EXPECT_TRUE(store.putAside(first));
    EXPECT_FALSE(store.unsavedSession());
    EXPECT_TRUE(store.removeAll() && store.sessions("").empty());
}

TEST(QtSessionStore, IsReadableForTheUserAloneAndKeepsNothingOfWhatIsRemoved)
{
    Place place;
    auto const id = place.addSession("Nobody");
    auto const others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
    EXPECT_FALSE((QFile::permissions(place.path) | QFile::permissions(place.data.path())) & others);
    QtSessionStore store(place.path);
    store.remove(id);
    for (auto const& name : place.data.entryList(QDir::Files)) {
        QFile rest(place.data.filePath(name));
        ASSERT_TRUE(rest.open(QIODevice::ReadOnly));
        EXPECT_FALSE(rest.readAll().contains("Nobody")) << name.toStdString();
    }
}

TEST(QtSessionStore, SaysWhyItDoesNotOpenOrBeginsANewFile)
{
    auto const run = [](char const* statement) {
        return [=](Place& place) { SessionDatabase(place.path).run(statement); };
    };
    struct {
        char const* fault;
        std::function<void(Place&)> plant;
        char const* problem;
        char const* setAside;
    } const rows[] {
        {"no fault", [](Place&) {}, "", ""},
        {"no database", [](Place& place) { place.spoil("garbage", 0); }, "壊れて", "damaged"},
        {"a spoilt page", [](Place& place) { place.spoil(QByteArray(4096, 'x'), 4096); }, "壊れて",
            "damaged"},
        {"no tables", run("DROP TABLE points"), "壊れて", "damaged"},
        {"a newer program", run("PRAGMA user_version = 2"), "新しい版", "newer"},
        {"a folder in its place",
            [](Place& place) { QFile::remove(place.path) && place.data.mkdir("sessions.db"); },
            "書き込めません", ""},
    };
    for (auto const& [fault, plant, problem, setAside] : rows) {
        Place place;
        place.addSession("花子");
        plant(place);
        QtSessionStore store(place.path);
        bool const opens = *problem == '\0' || *setAside != '\0';
        EXPECT_EQ(store.isOpen(), opens) << fault;
        EXPECT_EQ(store.begin({}).has_value(), opens) << fault;
        EXPECT_EQ(store.openingProblem().empty(), *problem == '\0') << fault;
        EXPECT_NE(store.openingProblem().find(problem), std::string::npos) << fault;
        auto const files = place.data.entryList({"sessions.db.*"}).join(' ');
        EXPECT_TRUE(files.contains(setAside) && files.isEmpty() == (*setAside == '\0')) << fault;
        EXPECT_FALSE(QtSessionStore(place.path).isOpen()) << "one program at a time";
    }
}
