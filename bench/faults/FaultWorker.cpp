#include "FaultWorker.h"

#include "Recording.h"
#include "core/CsvBuilder.h"
#include "platform/qt/QtSaving.h"

#include <QCoreApplication>
#include <QDir>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <sys/syscall.h>
#include <unistd.h>

// To be killed and refused by the fault runs.

using namespace tensio;

namespace {

// Seen by those who trace the system calls.
void mark(char const* name)
{
    [[maybe_unused]] auto const marked = access(name, F_OK);
}

// Where to keep what a power cut would leave.
std::optional<std::filesystem::path> flushedFolder;

int flush(int file, long call)
{
    namespace fs = std::filesystem;
    auto const result = static_cast<int>(syscall(call, file));
    if (!flushedFolder)
        return result;
    auto const path = fs::read_symlink("/proc/self/fd/" + std::to_string(file));
    if (fs::is_regular_file(path))
        fs::copy_file(path, *flushedFolder / path.filename(), fs::copy_options::overwrite_existing);
    // What was deleted before a flush is gone after it.
    for (auto const& kept : fs::directory_iterator(*flushedFolder)) {
        if (!fs::exists(path.parent_path() / kept.path().filename()))
            fs::remove(kept.path());
    }
    return result;
}

int save(std::string const& path, bool isReplacing)
{
    if (isReplacing)
        std::ofstream(path) << std::string(savedSize / 2, 'o');
    mark(faultsBegin);
    bool const isSaved = QtFileWriter().writeAtomically(path, std::string(savedSize, 'n'));
    mark(faultsEnd);
    return isSaved ? 0 : 1;
}

// Prints a dot for each record and a line break for each measurement. Returns how many messages the
// user was shown; 100 when the session or the file is not whole.
int record(QDir const& folder)
{
    mark(faultsBegin);
    std::optional<Recording> recording(folder.filePath(storeFile));
    auto& [session, store, archive] = *recording;
    int messages = archive.problem.value() == StoreProblem::None ? 0 : 1;
    auto const counting = archive.problem.observeChanges(
        [&](StoreProblem problem) { messages += problem == StoreProblem::None ? 0 : 1; });
    for (int burst = 0; burst < 3; ++burst) {
        for (int point = 1; point <= 60; ++point) {
            session.receive({1.0 * point});
            session.runLoop.advance(Seconds(0.05));
            std::cout << "." << std::flush;
        }
        session.runLoop.advance(Seconds(2.0));
        std::cout << "\n" << std::flush;
    }
    session.finish();
    auto const& measurements = session.manager.measurementList.measurements();
    // With the store still open, as after any session.
    mark(faultsEnd);
    bool const isWhole = measurements.size() == 3 && measurements[2]->pressurePoints->size() == 60
        && QtFileWriter().writeAtomically(
            folder.filePath(savedFile).toStdString(), csvFile("花子", "").build(measurements));
    mark(faultsBegin);
    recording.reset();
    mark(faultsEnd);
    return isWhole ? messages : 100;
}

bool storePress(QtSessionStore& store, std::string const& name, int number)
{
    std::vector<float> points;
    for (int place = 1; place <= 60; ++place)
        points.push_back(static_cast<float>(place));
    MeasurementPart const part {number, 60.0f, 30.0f, {}, true, 0, points};
    return number == 1 ? store.begin({Date(), name, 30.0f, 1.0f, false}, part).has_value()
                       : store.write(1, part);
}

int cut(QDir const& folder)
{
    folder.mkpath("flushed/data");
    flushedFolder = folder.filePath("flushed/data").toStdString();
    QtSessionStore store(folder.filePath(storeFile));
    mark(faultsBegin);
    for (int number = 1; number <= 3 && storePress(store, "花子", number); ++number)
        std::cout << "\n" << std::flush;
    mark(faultsEnd);
    return 0;
}

StoreProblem finish(SessionTransfer& transfer)
{
    auto state = TransferState::Running;
    while (state == TransferState::Running)
        state = transfer.step();
    return state == TransferState::Done   ? StoreProblem::None
        : state == TransferState::NoSpace ? StoreProblem::NoSpace
                                          : StoreProblem::NotWritable;
}

void prepareStore(QDir const& folder, std::string const& backup)
{
    QtSessionStore others(folder.filePath("others.db"));
    for (auto const* name : {"c", "d", "e"})
        storePress(others, name, 1);
    finish(*others.backUp(backup));
    QtSessionStore store(folder.filePath(storeFile));
    for (auto const* name : {"a", "b"})
        storePress(store, name, 1);
}

// As version 1 left it.
void makeOld(QString const& path)
{
    SessionDatabase database(path);
    for (auto const* statement : {"DROP INDEX starts", "DROP INDEX identities",
             "ALTER TABLE session DROP COLUMN identity", "PRAGMA user_version = 1"})
        database.run(statement);
}

int change(QDir const& folder, std::string const& task)
{
    auto const backup = folder.filePath(backupFile).toStdString();
    if (task != "start")
        prepareStore(folder, backup);
    if (task == "update")
        makeOld(folder.filePath(storeFile));
    mark(faultsBegin);
    std::optional<QtSessionStore> store(folder.filePath(storeFile));
    bool const isChanged = task == "remove" ? store->remove({1, 2})
        : task == "removeAll"               ? store->removeAll()
                                            : store->problem() == StoreProblem::None;
    auto const problem = task == "backUp" ? finish(*store->backUp(backup))
        : task == "restore"               ? finish(*store->restore(backup))
        : isChanged                       ? StoreProblem::None
                                          : store->problem();
    store.reset();
    mark(faultsEnd);
    return static_cast<int>(problem);
}

} // namespace

// SQLite and Qt call these.
extern "C" int fsync(int file)
{
    return flush(file, SYS_fsync);
}

extern "C" int fdatasync(int file)
{
    return flush(file, SYS_fdatasync);
}

int main(int argc, char** argv)
{
    QCoreApplication const application(argc, argv);
    std::string const task = argc == 3 ? argv[1] : "";
    QDir const folder(argv[argc - 1]);
    if (task == "record")
        return record(folder);
    if (task == "cut")
        return cut(folder);
    if (task != "create" && task != "replace")
        return change(folder, task);
    return save(folder.filePath(savedFile).toStdString(), task == "replace");
}
