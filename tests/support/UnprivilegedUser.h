#pragma once

#include <stdexcept>
#include <unistd.h>

namespace tensio {

// For its lifetime a process of root's has no more rights than any user. Of an ordinary user's it
// changes nothing.
class UnprivilegedUser {
public:
    UnprivilegedUser() { become(nobody); }
    UnprivilegedUser(UnprivilegedUser const&) = delete;
    UnprivilegedUser& operator=(UnprivilegedUser const&) = delete;
    ~UnprivilegedUser()
    {
        if (m_wasRoot) [[maybe_unused]]
            auto const result = setresuid(0, 0, 0);
    }

    bool wasRoot() const { return m_wasRoot; }

private:
    static constexpr uid_t nobody = 65534;

    // Root stays the saved user, to come back to.
    void become(uid_t user) const
    {
        if (m_wasRoot && setresuid(user, user, 0) != 0)
            throw std::runtime_error("cannot give up root's rights");
    }

    bool m_wasRoot = geteuid() == 0;
};

} // namespace tensio
