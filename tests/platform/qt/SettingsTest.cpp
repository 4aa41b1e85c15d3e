#include "platform/qt/QtSaving.h"
#include "platform/qt/QtUserDefaults.h"
#include "support/Session.h"
#include "support/UnprivilegedUser.h"

#include <QTemporaryDir>

#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace tensio;

TEST(Settings, OnlyANumberAboveZeroReplacesTheFirstDefaultAndAChoiceIsKept)
{
    auto const junk = QByteArray("\x00\xff[[[\n=;\n%zz=\x80", 15).repeated(1000).toStdString();
    std::tuple<std::string, mode_t, float> const rows[] {{"42.5", 0666, 42.5f}, {"0", 0666, 30.0f},
        {"-12", 0666, 30.0f}, {"nan", 0666, 30.0f}, {"12,5", 0666, 30.0f}, {junk, 0666, 30.0f},
        {std::string(100'000, '9'), 0666, 30.0f}, {"42.5", 0444, 42.5f}, {"42.5", 0000, 30.0f}};
    for (auto const& [value, mode, target] : rows) {
        QTemporaryDir const folder;
        auto const path = folder.filePath("tensio.ini").toStdString();
        QtFileWriter().writeAtomically(path, "[General]\ntarget%20pressure=" + value + "\n");
        bool const isWritable = mode == 0666;
        chmod(path.c_str(), mode);
        chmod(folder.path().toUtf8(), isWritable ? 0777 : 0555);
        {
            UnprivilegedUser const user;
            Session fakes;
            QtUserDefaults userDefaults(QString::fromStdString(path));
            TensioManager manager(fakes.ports, fakes.runLoop, fakes.clock, userDefaults,
                {fakes.pdfRenderer, fakes.saving, fakes.saving, fakes.saving, fakes.alerts});
            EXPECT_EQ(manager.defaultTargetPressure.value(), target) << value.substr(0, 40) << mode;
            manager.setTargetPressure(55);
        }
        chmod(path.c_str(), 0600);
        std::ifstream file(path);
        std::string const text(std::istreambuf_iterator<char>(file), {});
        EXPECT_TRUE(text.ends_with(isWritable ? "=55\n" : "=42.5\n")) << text.substr(0, 40);
    }
}
