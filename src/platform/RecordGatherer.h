#pragma once

#include "platform/RecordShape.h"
#include "reactive/Scheduler.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace tensio {

// Joins what the operating system split: bytes are handed on as soon as they make up whole records.
// Of bytes that are records without doubt the whole ones go at once and the cut one waits until its
// rest comes, however long: a bridge may send seldom. Any other rest waits for 20 ms of silence,
// then goes as it is, so that noise costs at most the burst it came in.
// A stray or a lost byte shifts a stream that knows no silence: two records beyond doubt that begin
// off the beat are where reading goes on, and until then nothing is read that might be shifted.
class RecordGatherer {
public:
    static constexpr Seconds silence {0.020};
    // Noise without a pause must not fill the memory.
    static constexpr std::size_t maxHeldBytes = std::size_t {6} * 4096;

    using Deliver = std::function<void(std::string_view chunk)>;

    RecordGatherer(Scheduler& scheduler, RecordShape shape, Deliver deliver);

    // What is delivered must not call the gatherer, nor end it.
    void receive(std::string_view bytes);
    // Hands on what is held, whole or not.
    void flush();
    void discard();

private:
    void fallSilent();
    void handOn(std::size_t length);
    std::optional<std::size_t> startOffBeat(std::size_t from, std::size_t leastBytes) const;
    std::size_t tail() const;

    Scheduler& m_scheduler;
    RecordShape m_shape;
    Deliver m_deliver;
    std::string m_held;
    // What is held is the beginning of a record, and silence followed it.
    bool m_isCutBySilence = false;
    Subscription m_silenceTimer;
};

} // namespace tensio
