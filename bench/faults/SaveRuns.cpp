#include "platform/qt/QtSaving.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <map>

// Saves that the system refuses, or that are killed, at each of their system calls.

using namespace tensio;

namespace {

constexpr int size = 300'000;

// A folder with a file, or none, that a save is to replace.
struct Target {
    QTemporaryDir folder;
    QString path {folder.filePath(QStringLiteral("結果.csv"))};
    QByteArray old;

    explicit Target(bool exists)
        : old(exists ? size / 2 : 0, 'o')
    {
        if (exists) {
            EXPECT_TRUE(QtFileWriter().writeAtomically(path.toStdString(), old.toStdString()));
        }
    }

    QByteArray contents() const
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    qsizetype filesBeside() const
    {
        auto const all = QDir(folder.path()).entryList(QDir::Files | QDir::Hidden);
        return all.size() - (QFile::exists(path) ? 1 : 0);
    }

    // How a save under strace ends: 0 when it claims success, -1 when it was killed.
    int save(QStringList const& straceOptions) const
    {
        QProcess strace;
        strace.start(QStringLiteral("strace"),
            straceOptions
                + QStringList {QStringLiteral(TENSIO_SAVE_WORKER), path, QString::number(size),
                    QStringLiteral("n")});
        EXPECT_TRUE(strace.waitForFinished(-1)) << "tools/install-dependencies strace";
        return strace.exitStatus() == QProcess::NormalExit ? strace.exitCode() : -1;
    }
};

// Each system call of a save as its name and its count since the program's start.
std::vector<std::pair<QString, int>> callsOfASave(bool exists)
{
    Target const target(exists);
    auto const log = target.folder.filePath(QStringLiteral("log"));
    EXPECT_EQ(target.save({QStringLiteral("-o"), log}), 0);
    QFile file(log);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    std::vector<std::pair<QString, int>> calls;
    std::map<QString, int> counts;
    bool isSaving = false;
    for (auto const& line : file.readAll().split('\n')) {
        auto const name = QString::fromUtf8(line.left(line.indexOf('(')));
        auto const count = ++counts[name];
        if (line.contains("/save-begins") || line.contains("/save-ended"))
            isSaving = line.contains("/save-begins");
        else if (isSaving)
            calls.emplace_back(name, count);
    }
    return calls;
}

} // namespace

TEST(SaveRuns, LeaveTheOldFileOrTheNewWhateverCallFails)
{
    int refusals = 0;
    for (bool const exists : {true, false}) {
        auto const calls = callsOfASave(exists);
        ASSERT_GE(calls.size(), 10U);
        for (auto const& [call, count] : calls) {
            for (std::string const fault : {"error=ENOSPC", "error=EDQUOT", "error=EIO",
                     "error=EINTR", "error=EACCES", "signal=KILL"}) {
                SCOPED_TRACE(
                    fault + " at call " + std::to_string(count) + " of " + call.toStdString());
                Target const target(exists);
                auto const result = target.save(
                    {QStringLiteral("-o"), QStringLiteral("/dev/null"), QStringLiteral("-e"),
                        QStringLiteral("inject=%1:%2:when=%3")
                            .arg(call, QString::fromStdString(fault))
                            .arg(count)});
                auto const found = target.contents();
                bool const isNew = found == QByteArray(size, 'n');
                EXPECT_TRUE(isNew || found == target.old);
                EXPECT_TRUE(result == -1 || isNew == (result == 0));
                EXPECT_TRUE(result == -1 || target.filesBeside() == 0);
                refusals += result == 1 ? 1 : 0;
            }
        }
    }
    EXPECT_GT(refusals, 20) << "calls that matter must be among them";
}
