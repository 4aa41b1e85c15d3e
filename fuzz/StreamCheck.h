#pragma once

#include <string>
#include <string_view>

namespace tensio::fuzz {

// Plays a fuzzer's bytes through gathering, records, session and CSV in virtual time, and says what
// should hold for every stream and does not; empty when all does.
std::string brokenProperty(std::string_view bytes);

} // namespace tensio::fuzz
