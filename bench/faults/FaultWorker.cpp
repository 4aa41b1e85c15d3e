#include "FaultWorker.h"

#include "Recording.h"
#include "core/CsvBuilder.h"
#include "platform/qt/QtSaving.h"

#include <QCoreApplication>
#include <QDir>

#include <iostream>
#include <unistd.h>

// To be killed and refused by the fault runs.

using namespace tensio;

namespace {

// Seen by those who trace the system calls.
void mark(char const* name)
{
    [[maybe_unused]] auto const marked = access(name, F_OK);
}

bool save(QDir const& folder, int size, char letter)
{
    auto const path = folder.filePath(savedFile).toStdString();
    return QtFileWriter().writeAtomically(
        path, std::string(static_cast<std::size_t>(size), letter));
}

int saveBetweenMarks(QDir const& folder)
{
    mark(faultsBegin);
    bool const isSaved = save(folder, savedSize, 'n');
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
    auto counting = archive.problem.observeChanges(
        [&](StoreProblem problem) { messages += problem == StoreProblem::None ? 0 : 1; });
    auto const print = [](char const* sign) { std::cout << sign << std::flush; };
    for (int burst = 0; burst < 3; ++burst) {
        recording->press(3, [&] { print("."); });
        print("\n");
    }
    session.manager.disconnectAction.apply(Nothing {});
    auto const& measurements = session.manager.measurementList.measurements();
    mark(faultsEnd);
    bool const isWhole = measurements.size() == 3 && measurements[2]->pressurePoints->size() == 60
        && QtFileWriter().writeAtomically(
            folder.filePath(savedFile).toStdString(), csvOfAll("花子", "", measurements));
    counting.end();
    mark(faultsBegin);
    recording.reset();
    mark(faultsEnd);
    return isWhole ? messages : 100;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication const application(argc, argv);
    std::string const task = argc == 3 ? argv[1] : "";
    QDir const folder(argv[argc - 1]);
    if (task == "record")
        return record(folder);
    if (task == "replace" && !save(folder, savedSize / 2, 'o'))
        return 2;
    return saveBetweenMarks(folder);
}
