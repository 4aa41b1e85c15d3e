#pragma once

namespace tensio {

// fault_worker TASK FOLDER does between these marks what the system refuses or kills: "create" and
// "replace" save a file of n's, in place of none or of half as many o's, and end with 0 if they
// believe that it is there. "record" ends with how often a recorded session spoke up. "cut" stores
// three measurements, prints a line break after each, and keeps what the disk has of each file in
// the folder "flushed". The others change a store of two sessions in one step, and end with 0, or
// with its StoreProblem: "update" one of version 1, "remove", "removeAll", "backUp" in place of a
// backup of three others, and "restore" of that backup. "start" makes a store.
constexpr char const* faultsBegin = "/faults-begin";
constexpr char const* faultsEnd = "/faults-end";
constexpr char const* savedFile = "結果.csv";
constexpr char const* storeFile = "data/sessions.db";
constexpr char const* backupFile = "バックアップ.db";
constexpr int savedSize = 300'000;

} // namespace tensio
