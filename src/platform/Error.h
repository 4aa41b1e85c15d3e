#pragma once

#include <memory>
#include <string>
#include <utility>

namespace tensio {

// An operation that failed outside the program's control, with the message shown to the user
// (UTF-8, Japanese).
class Error {
public:
    Error(std::string domain, int code, std::string description = {})
        : m_domain(std::move(domain))
        , m_code(code)
        , m_description(std::move(description))
    {
    }
    Error(Error const&) = delete;
    Error& operator=(Error const&) = delete;
    virtual ~Error() = default;

    // The library that reports the error, and its code for it.
    std::string const& domain() const { return m_domain; }
    int code() const { return m_code; }
    virtual std::string localizedDescription() const { return m_description; }

private:
    std::string m_domain;
    int m_code;
    std::string m_description;
};

// Never null.
using ErrorRef = std::shared_ptr<Error const>;

} // namespace tensio
