#pragma once

#include "platform/Device.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace tensio {

// One pressure as the device writes it: sign, three digits of kPa, a digit of tenths, a filler.
constexpr std::size_t deviceRecordWidth = 6;

// The pressures (kPa) of a chunk of whole records, in order. A chunk that is not UTF-8 or not whole
// records yields none; a record whose fields are no numbers is skipped.
std::vector<float> readRecords(std::string_view chunk);

// Records of a plus or a minus, four digits and an ASCII filler; the last may be incomplete.
bool looksLikeDeviceRecords(std::string_view bytes);

constexpr RecordFormat deviceRecordFormat {deviceRecordWidth, looksLikeDeviceRecords};

constexpr Device tonguePressureDevice {"SLAB_USBtoUART", 0x10c4, deviceRecordFormat};

} // namespace tensio
