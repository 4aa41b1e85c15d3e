#include "platform/qt/QtSaving.h"

#include <cstdlib>
#include <string>
#include <unistd.h>

// save_worker PATH SIZE LETTER saves that many of the letter and ends with 0 if it believes that
// they are there. With "forever" it says so and goes on, the letter and its capital in turn. To be
// killed, starved and lied to by SaveRuns.

int main(int argc, char** argv)
{
    if (argc < 4)
        return 2;
    tensio::QtFileWriter writer;
    auto const size = static_cast<std::size_t>(std::atol(argv[2]));
    std::string const small(size, argv[3][0]);
    std::string const capital(size, static_cast<char>(std::toupper(argv[3][0])));

    // Seen by who traces the system calls.
    [[maybe_unused]] auto marked = access("/save-begins", F_OK);
    bool const isSaved = writer.writeAtomically(argv[1], small);
    marked = access("/save-ended", F_OK);
    bool const goesOn = argc > 4 && isSaved;
    if (goesOn)
        marked = static_cast<int>(write(STDOUT_FILENO, "!", 1));
    while (goesOn) {
        writer.writeAtomically(argv[1], capital);
        writer.writeAtomically(argv[1], small);
    }
    return isSaved ? 0 : 1;
}
