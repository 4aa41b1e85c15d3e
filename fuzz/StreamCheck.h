#pragma once

#include <string>
#include <string_view>

namespace tensio::fuzz {

// Plays a fuzzer's bytes through gathering, records, session and CSV in virtual time, and says in
// what the outcome differs from a second, naive reading of the same bytes; empty when in nothing.
std::string differenceFromNaive(std::string_view bytes);

} // namespace tensio::fuzz
