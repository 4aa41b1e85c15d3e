#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace tensio {

// What a port knows about the records that its device sends.
struct RecordFormat {
    // In bytes.
    std::size_t width;
    // True if the bytes are certainly records; the last may be incomplete. May reject readable
    // records, but must reject input shifted by a lost or extra byte.
    bool (*looksLikeRecords)(std::string_view bytes);

    bool isWholeNumberOfRecords(std::string_view bytes) const { return bytes.size() % width == 0; }

    // First offset >= from, not a multiple of the width, from which the rest of the bytes looks
    // like records; the rest must have minBytes at least.
    std::optional<std::size_t> findShiftedStart(
        std::string_view bytes, std::size_t from, std::size_t minBytes) const
    {
        for (auto start = from; start + minBytes <= bytes.size(); ++start) {
            if (start % width != 0 && looksLikeRecords(bytes.substr(start)))
                return start;
        }
        return std::nullopt;
    }
};

} // namespace tensio
