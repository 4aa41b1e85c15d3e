#pragma once

#include "core/Measurement.h"

#include <string>
#include <string_view>

namespace tensio::fuzz {

struct Reading {
    double seconds = 0.0;
    float pressure = 0.0f;
    float shown = 0.0f;
};

// What the program made of a stream. The file is of all measurements; empty when there were none.
struct PlayedStream {
    float target = 0.0f;
    std::vector<Reading> readings;
    Measurements finished;
    std::vector<float> unfinishedPoints;
    std::string csv;
    std::size_t timersLeft = 0;
    // The last thing that went wrong while it was played.
    std::string failure;
};

// Plays a fuzzer's bytes in virtual time: the first is the set-up; each write is a byte, three bits
// of pause and five of length, and that many bytes. As they are, with a record after 25 ms of
// silence, which must be read: at the end, or at every pause.
PlayedStream playBytes(std::string_view bytes);
// As well-formed records with the same cuts and pauses. Each must be read as soon as it is whole.
PlayedStream playRecords(std::string_view bytes);

} // namespace tensio::fuzz
