#include "platform/qt/QtSessionStore.h"

#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace tensio;

TEST(SessionLog, MovesIntoTheFileOnlyWhenToldAndLeavesNothingBehind)
{
    QTemporaryDir const folder;
    auto const path = folder.filePath("sessions.db");
    QtSessionStore store(path);
    auto const id
        = store.begin({{}, "花子", 30.0f, 1.0f, false}, {1, 30.0f, 20.0f, {}, false, 0, {}});
    auto const size = QFileInfo(path).size();
    std::vector const points(20, 30.0f);
    for (std::size_t part = 0; part < 800; ++part)
        EXPECT_TRUE(store.write(id.value(), {1, 30.0f, 20.0f, {}, false, part * 20, points}));
    EXPECT_EQ(QFileInfo(path).size(), size);
    EXPECT_TRUE(store.checkpoint());
    EXPECT_GT(QFileInfo(path).size(), size);
    EXPECT_LE(QFileInfo(path + "-wal").size(), 4152) << "one page, which opened it again";
}
