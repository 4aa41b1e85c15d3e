#include "platform/qt/QtSessionStore.h"

#include "support/UnprivilegedUser.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace tensio;

namespace {

struct Place {
    QTemporaryDir folder;
    QString path {folder.filePath(QStringLiteral("data/sessions.db"))};

    // The session's id.
    SessionId addSession(std::string const& name, float best = 30.0f)
    {
        QtSessionStore store(path);
        auto const id = store.begin({Date(std::chrono::seconds(5)), name, 40.0f, 0.5f, true});
        std::vector<float> const points(50, best);
        EXPECT_TRUE(id && store.write(*id, {1, best, 20.0f, {}, false, 0, points}));
        EXPECT_TRUE(store.write(*id, {1, best, 20.0f, {}, true, 50, std::vector {-1.0f}}));
        EXPECT_TRUE(store.write(*id, {2, best - 10.0f, 20.0f, {}, true, 0, points}));
        return id.value_or(0);
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
    auto const& measurement = loaded->measurements.front();
    EXPECT_EQ(measurement.points.size(), 51U);
    EXPECT_EQ(measurement.points.back(), -1.0f);
    EXPECT_EQ(std::tuple(measurement.number, measurement.best, measurement.target),
        std::tuple(1, 30.0f, 20.0f));
    auto const found = store.sessions("");
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(std::tuple(found[0].id, found[0].best, found[0].count, found[0].isSaved,
                  found[0].isSimulated, found[0].start),
        std::tuple(second, 50.5f, 2, false, true, Date(std::chrono::seconds(5))));
    EXPECT_EQ(store.sessions("yama").size(), 1U);
    ASSERT_TRUE(store.unsavedSession());
    EXPECT_EQ(store.unsavedSession()->id, second);
    EXPECT_TRUE(store.markSaved(second));
    EXPECT_FALSE(store.unsavedSession()) << "only the newest counts";
    EXPECT_TRUE(store.remove(second));
    EXPECT_EQ(store.unsavedSession()->id, first);
    EXPECT_TRUE(store.putAside(first));
    EXPECT_FALSE(store.unsavedSession());
    EXPECT_TRUE(store.removeAll());
    EXPECT_TRUE(store.sessions("").empty());
}

TEST(QtSessionStore, IsReadableForTheUserAloneAndKeepsNothingOfWhatIsRemoved)
{
    Place place;
    auto const id = place.addSession("Nobody");
    auto const others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
    EXPECT_FALSE(QFile::permissions(place.path) & others);
    EXPECT_FALSE(QFile::permissions(place.folder.filePath(QStringLiteral("data"))) & others);
    QtSessionStore(place.path).remove(id);
    for (auto const& file :
        QDir(place.folder.filePath(QStringLiteral("data"))).entryList(QDir::Files)) {
        QFile rest(place.folder.filePath(QStringLiteral("data/") + file));
        ASSERT_TRUE(rest.open(QIODevice::ReadOnly));
        EXPECT_FALSE(rest.readAll().contains("Nobody")) << file.toStdString();
    }
}

TEST(QtSessionStore, SaysWhyItDoesNotOpenOrBeginsAnew)
{
    struct Row {
        char const* fault;
        std::function<void(Place&)> plant;
        bool isOpen;
        char const* problem;
        char const* setAside;
    };
    std::vector<Row> const rows {
        {"no fault", [](Place&) {}, true, "", ""},
        {"no database", [](Place& place) { place.spoil("garbage", 0); }, true, "壊れて", "damaged"},
        {"a spoilt page", [](Place& place) { place.spoil(QByteArray(4096, 'x'), 4096); }, true,
            "壊れて", "damaged"},
        {"no tables",
            [](Place& place) { SessionDatabase(place.path).run(u"DROP TABLE points"_qs); }, true,
            "壊れて", "damaged"},
        {"a newer program",
            [](Place& place) { SessionDatabase(place.path).run(u"PRAGMA user_version = 2"_qs); },
            true, "新しい版", "newer"},
        {"a folder in its place",
            [](Place& place) {
                QFile::remove(place.path);
                QDir().mkpath(place.path);
            },
            false, "書き込めません", ""},
    };
    for (auto const& [fault, plant, isOpen, problem, setAside] : rows) {
        Place place;
        place.addSession("花子");
        plant(place);
        QtSessionStore store(place.path);
        EXPECT_EQ(store.isOpen(), isOpen) << fault;
        EXPECT_EQ(store.begin({}).has_value(), isOpen) << fault;
        EXPECT_EQ(store.openingProblem().empty(), *problem == '\0') << fault;
        EXPECT_NE(store.openingProblem().find(problem), std::string::npos) << fault;
        auto const files = QDir(place.folder.filePath(QStringLiteral("data")))
                               .entryList({QStringLiteral("sessions.db.*")});
        EXPECT_EQ(files.join(u' ').contains(QString::fromLatin1(setAside)), true) << fault;
        EXPECT_EQ(files.empty(), *setAside == '\0') << fault;
        QtSessionStore second(place.path);
        EXPECT_FALSE(second.isOpen()) << "one program at a time";
    }
}
