#include "platform/qt/QtSaving.h"

#include <cstdlib>
#include <string>
#include <unistd.h>

// save_worker PATH SIZE LETTER saves that many of the letter and ends with 0 if it believes that
// they are there. To be killed and refused by SaveRuns.

int main(int argc, char** argv)
{
    if (argc != 4)
        return 2;
    std::string const bytes(static_cast<std::size_t>(std::atol(argv[2])), argv[3][0]);
    // Seen by who traces the system calls.
    [[maybe_unused]] auto marked = access("/save-begins", F_OK);
    bool const isSaved = tensio::QtFileWriter().writeAtomically(argv[1], bytes);
    marked = access("/save-ended", F_OK);
    return isSaved ? 0 : 1;
}
