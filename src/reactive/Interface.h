#pragma once

namespace tensio {

// Base of abstract classes: not copyable, destroyed through a pointer to the base.
class Interface {
public:
    Interface(Interface const&) = delete;
    Interface& operator=(Interface const&) = delete;
    virtual ~Interface() = default;

protected:
    Interface() = default;
};

} // namespace tensio
