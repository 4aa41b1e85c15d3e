#pragma once

#include <string>
#include <string_view>

namespace tensio::fuzz {

// Plays the bytes through gathering, records, session and CSV in virtual time and names a property
// that does not hold; empty when all do. The first byte is the set-up; each write is a byte (three
// bits of pause, five of length) and as many bytes as the length says.
std::string brokenProperty(std::string_view bytes);

} // namespace tensio::fuzz
