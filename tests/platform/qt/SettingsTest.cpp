#include "platform/qt/QtUserDefaults.h"
#include "support/Session.h"
#include "support/UnprivilegedUser.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace tensio;

namespace {

// The session manager with settings in this file.
struct Started {
    Session fakes;
    QtUserDefaults userDefaults;
    TensioManager manager;

    explicit Started(QString const& path)
        : userDefaults(path)
        , manager(fakes.ports, fakes.runLoop, fakes.clock, userDefaults,
              {fakes.csvReport, fakes.pdfRenderer, fakes.saving, fakes.saving, fakes.saving,
                  fakes.alerts})
    {
    }
};

void writeFile(QString const& path, QByteArray const& bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

} // namespace

TEST(Settings, OnlyANumberAboveZeroReplacesTheFirstDefaultAndAChoiceIsKept)
{
    struct Row {
        QByteArray value;
        float target;
    };
    std::vector<Row> const rows {{"42.5", 42.5f}, {"0", 30.0f}, {"-12", 30.0f}, {"nan", 30.0f},
        {"12,5", 30.0f}, {QByteArray(100'000, '9'), 30.0f}};
    for (auto const& [value, target] : rows) {
        QTemporaryDir folder;
        auto const path = folder.filePath(QStringLiteral("tensio.ini"));
        writeFile(path, "[General]\ntarget%20pressure=" + value + "\n");
        {
            Started started(path);
            EXPECT_EQ(started.manager.defaultTargetPressure.value(), target)
                << value.left(40).constData();
            started.manager.setTargetPressure(55);
        }
        EXPECT_EQ(Started(path).manager.defaultTargetPressure.value(), 55.0f);
    }
}

TEST(Settings, ABrokenOrForbiddenFileLeavesTheDefaults)
{
    QTemporaryDir folder;
    auto const junk = folder.filePath(QStringLiteral("junk.ini"));
    auto const forbidden = folder.filePath(QStringLiteral("forbidden.ini"));
    auto const readOnly = folder.filePath(QStringLiteral("read-only.ini"));
    writeFile(junk, QByteArray("\x00\xff[[[\n=;\n%zz=\x80", 15).repeated(1000));
    writeFile(forbidden, "[General]\ntarget%20pressure=42.5\n");
    writeFile(readOnly, "[General]\ntarget%20pressure=42.5\n");
    QFile::setPermissions(forbidden, {});
    chmod(readOnly.toLocal8Bit().constData(), 0444);
    chmod(folder.path().toLocal8Bit().constData(), 0555);

    UnprivilegedUser const user;
    struct Row {
        QString path;
        float target;
    };
    std::vector<Row> const rows {{junk, 30.0f}, {forbidden, 30.0f}, {readOnly, 42.5f},
        {folder.path(), 30.0f}, {QStringLiteral("/dev/full"), 30.0f}};
    for (auto const& [path, target] : rows) {
        Started started(path);
        EXPECT_EQ(started.manager.defaultTargetPressure.value(), target) << path.toStdString();
        started.manager.setTargetPressure(55);
        EXPECT_EQ(started.manager.defaultTargetPressure.value(), 55.0f);
    }
    QFile file(readOnly);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().endsWith("=42.5\n"));
}
