#pragma once

#include <string>
#include <string_view>

namespace tensio {

// The text as the bytes of a UTF-16 file: byte-order mark, then little-endian code units. Invalid
// UTF-8 yields the mark alone.
std::string encodeUtf16(std::string_view utf8);

} // namespace tensio
