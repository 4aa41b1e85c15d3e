#pragma once

#include "platform/RecordShape.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace tensio {

// One pressure as the device writes it: sign, three digits of kPa, a digit of tenths, a filler.
constexpr std::size_t deviceRecordWidth = 6;

// The pressures (kPa) of a chunk of whole records, in order. A chunk that is not UTF-8 or not whole
// records yields none; a record whose fields are no numbers is skipped.
std::vector<float> readRecords(std::string_view chunk);

// A plus or a minus, four digits, an ASCII filler, and so on.
bool areDeviceRecords(std::string_view bytes);

constexpr RecordShape deviceRecordShape {deviceRecordWidth, areDeviceRecords};

} // namespace tensio
