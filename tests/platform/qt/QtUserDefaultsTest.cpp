#include "platform/qt/QtUserDefaults.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace tensio;

TEST(QtUserDefaults, ReadsNumbersAndTakesEverythingElseForNothing)
{
    struct Row {
        char const* file;
        float value;
    };
    std::vector<Row> const rows {{"", 0.0f}, {"[General]\ntarget%20pressure=42.5\n", 42.5f},
        {"[General]\ntarget%20pressure=-5\n", -5.0f}, {"[General]\ntarget%20pressure=12,5\n", 0.0f},
        {"[General]\ntarget%20pressure=much\n", 0.0f}, {"\xff\xfe not settings \0", 0.0f}};
    for (auto const& [text, value] : rows) {
        QTemporaryDir folder;
        QFile file(folder.filePath(QStringLiteral("tensio.ini")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        file.close();
        EXPECT_EQ(QtUserDefaults(file.fileName()).floatForKey("target pressure"), value) << text;
    }
}

TEST(QtUserDefaults, KeepsAValueBetweenRunsAndSurvivesAPlaceThatCannotBeWritten)
{
    QTemporaryDir folder;
    auto const path = folder.filePath(QStringLiteral("tensio.ini"));
    QtUserDefaults first(path);
    first.setFloat("target pressure", 32.5f);
    first.synchronize();
    EXPECT_EQ(QtUserDefaults(path).floatForKey("target pressure"), 32.5f);

    QtUserDefaults nowhere(QStringLiteral("/proc/none/tensio.ini"));
    nowhere.setFloat("target pressure", 20.0f);
    nowhere.synchronize();
    EXPECT_EQ(nowhere.floatForKey("target pressure"), 20.0f);
}
