#pragma once

namespace tensio {

// fault_worker TASK FOLDER does between these marks what the system refuses or kills: "create" and
// "replace" save a file of n's, in place of none or of half as many o's, and end with 0 if they
// believe that it is there. "record" ends with how often a recorded session spoke up.
constexpr char const* faultsBegin = "/faults-begin";
constexpr char const* faultsEnd = "/faults-end";
constexpr char const* savedFile = "結果.csv";
constexpr char const* storeFile = "data/sessions.db";
constexpr int savedSize = 300'000;

} // namespace tensio
