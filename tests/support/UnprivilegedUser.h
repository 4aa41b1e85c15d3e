#pragma once

#include <stdexcept>
#include <unistd.h>

namespace tensio {

// For its lifetime a process of root's has no more rights than any user. Of an ordinary user's it
// changes nothing.
class UnprivilegedUser {
public:
    UnprivilegedUser()
    {
        constexpr uid_t nobody = 65534;
        // Root stays the saved user, to come back to.
        if (geteuid() == 0 && setresuid(nobody, nobody, 0) != 0)
            throw std::runtime_error("cannot give up root's rights");
    }
    UnprivilegedUser(UnprivilegedUser const&) = delete;
    UnprivilegedUser& operator=(UnprivilegedUser const&) = delete;
    // Does nothing for those who have never been root.
    ~UnprivilegedUser() { [[maybe_unused]] auto const result = setresuid(0, 0, 0); }
};

} // namespace tensio
