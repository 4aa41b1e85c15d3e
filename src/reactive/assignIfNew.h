#pragma once

#include <utility>

namespace tensio {

// True if the value differs from the variable's, which then takes it.
template<typename T, typename U>
bool assignIfNew(T& variable, U&& value)
{
    if (variable == value)
        return false;
    variable = std::forward<U>(value);
    return true;
}

} // namespace tensio
