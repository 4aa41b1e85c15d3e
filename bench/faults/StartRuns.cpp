#include "Figure.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

using namespace tensio;

namespace {

// The program itself, with this home and these further settings of its environment.
class Program {
public:
    Program(QString const& home, QProcessEnvironment const& more)
    {
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("HOME"), home);
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), home);
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), home);
        environment.insert(more);
        m_process.setProcessEnvironment(environment);
        m_process.start(QStringLiteral(TENSIO_PROGRAM), QStringList());
    }
    ~Program()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    Program(Program const&) = delete;
    Program& operator=(Program const&) = delete;

    // A second is plenty for what could make it refuse.
    bool isStillRunning() { return m_process.waitForStarted() && !m_process.waitForFinished(1000); }

private:
    QProcess m_process;
};

} // namespace

TEST(StartRuns, NoSettingsAreAReasonNotToStart)
{
    std::vector<QByteArray> const settings {"", "\xff\xfe[[[ junk \x01",
        "[General]\ntarget%20pressure=0\n", "[General]\ntarget%20pressure=-5\n",
        "[General]\ntarget%20pressure=nan\n", "[General]\ntarget%20pressure=inf\n",
        "[General]\ntarget%20pressure=much\n"};
    int starts = 0;
    for (auto const& text : settings) {
        QTemporaryDir home;
        QDir(home.path()).mkpath(QStringLiteral("tensio"));
        QFile file(home.filePath(QStringLiteral("tensio/tensio.ini")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        file.setPermissions(QFile::ReadOwner);
        file.close();
        EXPECT_TRUE(Program(home.path(), {}).isStillRunning()) << text.constData();
        ++starts;
    }
    report(std::to_string(starts) + " starts with junk for settings");
}

TEST(StartRuns, NeitherFontsNorAHomeAreNeededToStart)
{
    QTemporaryDir const home;
    QProcessEnvironment noFonts;
    noFonts.insert(QStringLiteral("FONTCONFIG_FILE"), QStringLiteral("/dev/null"));
    EXPECT_TRUE(Program(home.path(), noFonts).isStillRunning());
    EXPECT_TRUE(Program(QStringLiteral("/nowhere"), {}).isStillRunning());
    report("starts without fonts and without a home");
}
