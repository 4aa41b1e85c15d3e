#pragma once

#include "reactive/Interface.h"

#include <string>

namespace tensio {

// The settings kept between runs, by keys in ASCII.
class UserDefaults : public Interface {
public:
    // 0 when no value, or none that is a number, is stored.
    virtual float floatForKey(std::string const& key) const = 0;
    // Kept in memory, and written at the latest by synchronize(). Errors are not reported.
    virtual void setFloat(std::string const& key, float value) = 0;
    virtual void synchronize() = 0;
};

} // namespace tensio
