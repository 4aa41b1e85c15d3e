#pragma once

#include "FaultWorker.h"

#include <QDir>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <map>

namespace tensio {

struct WorkerResult {
    // -1 when it was killed.
    int code;
    QByteArray output;
    QString fault;
};

inline WorkerResult runWorker(
    QString const& task, QTemporaryDir const& folder, QStringList const& strace)
{
    QProcess process;
    process.start("strace",
        QStringList {"-f"} + strace + QStringList {TENSIO_FAULT_WORKER, task, folder.path()});
    EXPECT_TRUE(process.waitForFinished(-1)) << "tools/install-dependencies strace";
    bool const isKilled = process.exitStatus() != QProcess::NormalExit;
    return {isKilled ? -1 : process.exitCode(), process.readAllStandardOutput(), strace.back()};
}

// The system calls of this kind that the main thread makes, as their names and their counts since
// the start.
inline std::vector<std::pair<QString, int>> callsOf(QString const& task, char const* kind)
{
    QTemporaryDir const folder;
    EXPECT_EQ(runWorker(task, folder, {"-o", folder.filePath("log")}).code, 0);
    QFile file(folder.filePath("log"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    std::vector<std::pair<QString, int>> calls;
    std::map<QString, int> counts;
    bool isBetweenMarks = false;
    auto const lines = QString::fromUtf8(file.readAll()).split('\n');
    auto const mainThread = lines.first().section(' ', 0, 0);
    for (auto const& line : lines) {
        if (line.section(' ', 0, 0) != mainThread)
            continue;
        auto const call = line.section(' ', 1).trimmed();
        auto const name = call.section('(', 0, 0);
        auto const count = ++counts[name];
        if (call.contains(faultsBegin) || call.contains(faultsEnd))
            isBetweenMarks = call.contains(faultsBegin);
        else if (isBetweenMarks && call.contains(QRegularExpression(kind)))
            calls.emplace_back(name, count);
    }
    return calls;
}

// Runs the task with each of the faults at each of its calls of this kind.
template<typename Check>
void withEachFault(
    QString const& task, char const* kind, QStringList const& faults, Check const& check)
{
    for (auto const& [call, count] : callsOf(task, kind)) {
        for (auto const& fault : faults) {
            auto const injection = QString("inject=%1:%2:when=%3").arg(call, fault).arg(count);
            SCOPED_TRACE(injection.toStdString());
            QTemporaryDir const folder;
            check(
                QDir(folder.path()), runWorker(task, folder, {"-o", "/dev/null", "-e", injection}));
        }
    }
}

} // namespace tensio
