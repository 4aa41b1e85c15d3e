#include "Figure.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

using namespace tensio;

namespace {

// The program itself, or another, with this home and these further settings of its environment.
class Program {
public:
    Program(QString const& home, QProcessEnvironment const& more,
        QString const& program = QStringLiteral(TENSIO_PROGRAM), QStringList const& arguments = {})
    {
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("HOME"), home);
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), home);
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), home);
        environment.insert(more);
        m_process.setProcessEnvironment(environment);
        m_process.start(program, arguments);
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
    // -1 when it does not end, or not by itself.
    int exitCode(int milliseconds)
    {
        bool const hasEnded = m_process.waitForFinished(milliseconds);
        return hasEnded && m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode()
                                                                          : -1;
    }
    std::string complaints() { return m_process.readAllStandardError().toStdString(); }
    bool hasSaid(QByteArray const& words)
    {
        return m_process.readAllStandardOutput().contains(words);
    }

private:
    QProcess m_process;
};

// A virtual screen that has nothing on it, no status bar either.
class BareScreen {
public:
    BareScreen()
    {
        m_server.start(QStringLiteral("Xvfb"),
            {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                QStringLiteral("0"), QStringLiteral("1280x900x24"), QStringLiteral("-nolisten"),
                QStringLiteral("tcp")});
        EXPECT_TRUE(m_server.waitForReadyRead()) << "a virtual screen";
        m_environment.insert(
            QStringLiteral("DISPLAY"), u':' + QString::fromLatin1(m_server.readAll().trimmed()));
        m_environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
        // Nor a printer, nor a bus by which to find either.
        m_environment.insert(QStringLiteral("CUPS_SERVER"), QStringLiteral("/nowhere"));
        m_environment.insert(
            QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("unix:path=/nowhere"));
    }
    ~BareScreen()
    {
        m_server.terminate();
        m_server.waitForFinished();
    }
    BareScreen(BareScreen const&) = delete;
    BareScreen& operator=(BareScreen const&) = delete;

    QProcessEnvironment environment() const { return m_environment; }

    void press(QString const& keys) const
    {
        QProcess xdotool;
        xdotool.setProcessEnvironment(m_environment);
        xdotool.start(QStringLiteral("sh"),
            {QStringLiteral("-c"),
                QStringLiteral("xdotool search --sync --onlyvisible --name '^tensio' windowfocus "
                               "--sync sleep 0.5 key --delay 100 %1 sleep 0.5")
                    .arg(keys)});
        xdotool.waitForFinished();
    }

private:
    QProcess m_server;
    QProcessEnvironment m_environment = QProcessEnvironment::systemEnvironment();
};

// Fonts that have no Japanese in them.
QString onlyLatinFonts(QString const& folder)
{
    auto const path = QString(folder + QStringLiteral("/fonts.conf"));
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("<fontconfig><dir>/usr/share/fonts/truetype/dejavu</dir><cachedir>" + folder.toUtf8()
        + "</cachedir></fontconfig>");
    return path;
}

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

TEST(StartRuns, TheDefaultTargetIsChosenWithoutStatusBarPrinterAndFont)
{
    BareScreen const screen;
    for (bool const hasFonts : {true, false}) {
        QTemporaryDir const home;
        auto environment = screen.environment();
        if (!hasFonts)
            environment.insert(QStringLiteral("FONTCONFIG_FILE"), onlyLatinFonts(home.path()));
        Program program(home.path(), environment);
        screen.press(QStringLiteral("alt+t Down Down Down Return ctrl+q"));
        EXPECT_EQ(program.exitCode(10'000), 0);
        EXPECT_EQ(program.complaints(), "");
        QFile settings(home.filePath(QStringLiteral("tensio/tensio.ini")));
        EXPECT_TRUE(settings.open(QIODevice::ReadOnly));
        EXPECT_TRUE(settings.readAll().contains("target%20pressure=65\n"));
    }
    report("default target chosen from the menu bar, with and without a Japanese font");
}

TEST(StartRuns, ASessionIsPlayedWithoutStatusBarPrinterAndFont)
{
    BareScreen const screen;
    QTemporaryDir const home;
    auto environment = screen.environment();
    environment.insert(QStringLiteral("FONTCONFIG_FILE"), onlyLatinFonts(home.path()));
    Program demo(home.path(), environment, QStringLiteral(TENSIO_DEMO), {home.path()});
    demo.exitCode(300'000);
    // The last that it does is to tell how late the records were shown; that is judged elsewhere.
    EXPECT_TRUE(demo.hasSaid("Record written")) << demo.complaints();
    report("a whole session with a Latin font only");
}
