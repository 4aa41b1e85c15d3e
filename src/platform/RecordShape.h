#pragma once

#include <cstddef>
#include <string_view>

namespace tensio {

// What a port has to know of the records that its device sends.
struct RecordShape {
    // In bytes.
    std::size_t width;
    // Whether the bytes are records beyond doubt, the last perhaps cut short. May refuse some that
    // can be read, but must refuse whatever a lost or a stray byte shifted.
    bool (*areRecords)(std::string_view bytes);
};

} // namespace tensio
