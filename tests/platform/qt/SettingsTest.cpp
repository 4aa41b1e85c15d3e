#include "platform/qt/QtUserDefaults.h"
#include "support/Session.h"
#include "support/UnprivilegedUser.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace tensio;

namespace {

// The default that is found in this file; a choice replaces it, in the file if it may be written.
float loadAndReplace(QString const& path)
{
    Session fakes;
    QtUserDefaults userDefaults(path);
    TensioManager manager(fakes.ports, fakes.runLoop, fakes.clock, userDefaults,
        {fakes.csvFiles, fakes.pdfRenderer, fakes.saving, fakes.saving, fakes.saving,
            fakes.alerts});
    auto const loaded = manager.defaultTargetPressure.value();
    manager.setTargetPressure(55);
    EXPECT_EQ(manager.defaultTargetPressure.value(), 55.0f);
    return loaded;
}

} // namespace

TEST(Settings, OnlyANumberAboveZeroReplacesTheFirstDefaultAndAChoiceIsKept)
{
    auto const junk = QByteArray("\x00\xff[[[\n=;\n%zz=\x80", 15).repeated(1000);
    std::tuple<QByteArray, mode_t, float> const rows[] {{"42.5", 0666, 42.5f}, {"0", 0666, 30.0f},
        {"-12", 0666, 30.0f}, {"nan", 0666, 30.0f}, {"12,5", 0666, 30.0f}, {junk, 0666, 30.0f},
        {QByteArray(100'000, '9'), 0666, 30.0f}, {"42.5", 0444, 42.5f}, {"42.5", 0000, 30.0f}};
    for (auto const& [value, mode, target] : rows) {
        QTemporaryDir const folder;
        auto const path = folder.filePath("tensio.ini");
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("[General]\ntarget%20pressure=" + value + "\n");
        file.close();
        bool const isWritable = mode == 0666;
        chmod(path.toUtf8(), mode);
        chmod(folder.path().toUtf8(), isWritable ? 0777 : 0555);
        {
            UnprivilegedUser const user;
            EXPECT_EQ(loadAndReplace(path), target) << value.left(40).constData() << mode;
        }
        chmod(path.toUtf8(), 0600);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_TRUE(file.readAll().endsWith(isWritable ? "=55\n" : "=42.5\n"));
    }
}
