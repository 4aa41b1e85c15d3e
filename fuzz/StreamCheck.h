#pragma once

#include <string>
#include <string_view>

namespace tensio::fuzz {

// Plays a fuzzer's bytes through gathering, records, session and CSV in virtual time, and says what
// should hold for every stream and does not; empty when all does. The first byte is the set-up;
// each write is a byte, three bits of pause and five of length, and that many bytes.
std::string brokenProperty(std::string_view bytes);

} // namespace tensio::fuzz
