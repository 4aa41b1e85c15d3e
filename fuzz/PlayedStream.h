#pragma once

#include "FuzzInput.h"
#include "core/Measurement.h"

namespace tensio::fuzz {

struct Reading {
    double seconds = 0.0;
    float pressure = 0.0f;
    float shown = 0.0f;
};

// What the program made of a stream. The file is of all measurements; empty when none was finished.
struct PlayedStream {
    std::vector<Reading> readings;
    Measurements finished;
    std::vector<float> unfinishedPoints;
    std::string csv;
    std::size_t timersLeft = 0;
    // The first thing that went wrong while it was played.
    std::string failure;
};

// Plays the bytes as they are, in virtual time. After 25 ms of silence comes a record, which must
// be read alone: before the end, or at every such silence.
PlayedStream playBytes(FuzzInput const& input);

// Plays as many bytes of well-formed records, with the same cuts and pauses. Each record must be
// read as soon as its last byte has come.
PlayedStream playRecords(FuzzInput const& input);

constexpr auto subjectName = "氏\t名𠮷";

} // namespace tensio::fuzz
