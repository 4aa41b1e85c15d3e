#include "EachFault.h"

// Saves that the system refuses, or that are killed, at each of their system calls.

using namespace tensio;

TEST(SaveRuns, LeaveTheOldFileOrTheNewWhateverCallFails)
{
    EXPECT_EQ(callsOf("create", "^f(data)?sync").size(), 2U) << "survives a power cut";
    int refusals = 0;
    QStringList const faults {
        "error=ENOSPC", "error=EDQUOT", "error=EIO", "error=EINTR", "error=EACCES", "signal=KILL"};
    for (auto const* task : {"create", "replace"}) {
        QByteArray const old(task == std::string("create") ? 0 : savedSize / 2, 'o');
        withEachFault(task, ".", faults, [&](QDir const& folder, WorkerResult const& result) {
            QFile file(folder.filePath(savedFile));
            auto const found = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
            bool const isNew = found == QByteArray(savedSize, 'n');
            EXPECT_TRUE(isNew || found == old);
            EXPECT_TRUE(result.code == -1 || isNew == (result.code == 0));
            auto const files = folder.entryList(QDir::Files | QDir::Hidden).size();
            EXPECT_TRUE(result.code == -1 || files == (file.exists() ? 1 : 0));
            refusals += result.code == 1 ? 1 : 0;
        });
    }
    EXPECT_GT(refusals, 20) << "calls that matter must be among them";
}
