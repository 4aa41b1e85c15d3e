#include "platform/qt/QtSaving.h"
#include "platform/qt/QtUserDefaults.h"
#include "support/Session.h"

#include <QTemporaryDir>

#include <fstream>
#include <gtest/gtest.h>

using namespace tensio;

TEST(Settings, OnlyANumberAboveZeroReplacesTheFirstDefaultAndAChoiceIsKept)
{
    auto const junk = QByteArray("\x00\xff[[[\n=;\n%zz=\x80", 15).repeated(1000).toStdString();
    for (auto const& value : std::vector<std::string> {
             "42.5", "0", "-12", "nan", "12,5", junk, std::string(100'000, '9')}) {
        QTemporaryDir const folder;
        auto const path = folder.filePath("tensio.ini").toStdString();
        QtFileWriter().writeAtomically(path, "[General]\ntarget%20pressure=" + value + "\n");
        {
            Session fakes;
            QtUserDefaults userDefaults(QString::fromStdString(path));
            TensioManager manager(fakes.ports, fakes.runLoop, fakes.clock, userDefaults,
                {fakes.pdfRenderer, fakes.saving, fakes.saving, fakes.saving, fakes.alerts});
            EXPECT_EQ(manager.defaultTargetPressure.value(), value == "42.5" ? 42.5f : 30.0f)
                << value.substr(0, 40);
            manager.setTargetPressure(55);
        }
        std::ifstream file(path);
        std::string const text(std::istreambuf_iterator<char>(file), {});
        EXPECT_TRUE(text.ends_with("=55\n")) << text.substr(0, 40);
    }
}
