#pragma once

#include "platform/RecordFormat.h"
#include "reactive/Scheduler.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace tensio {

// Reassembles records that the operating system split. It lies here, not in core, because bytes
// must be joined before a queue holds them back.
// - Complete records are delivered at once. An incomplete one waits for its rest, even through
//   silence: a bridge may send seldom.
// - Other bytes are delivered when they have the length of whole records, or after 20 ms of
//   silence, so that noise spoils only the burst it came in.
// - After a lost or extra byte, reading resumes at the first two certain records. Until then
//   nothing is delivered that could be read shifted.
class RecordGatherer {
public:
    static constexpr Seconds silence {0.020};
    // In bytes: noise without a pause must not fill the memory.
    static constexpr std::size_t maxBufferSize = std::size_t {24} * 1024;

    // Must neither call nor destroy the gatherer. The chunk is valid only during the call.
    using Deliver = std::function<void(std::string_view chunk)>;

    RecordGatherer(Scheduler& scheduler, RecordFormat format, Deliver deliver);

    void receive(std::string_view bytes);
    // Delivers what is buffered, complete or not.
    void flush();
    // Drops what is buffered.
    void discard();

private:
    void deliverComplete();
    void deliver(std::size_t length);
    void onSilence();
    void stopWaiting();
    bool endsInShiftedRecords(std::size_t minBytes) const;
    std::size_t unexaminedFrom() const;

    Scheduler& m_scheduler;
    RecordFormat m_format;
    Deliver m_deliver;
    std::string m_buffer;
    // The buffer is the beginning of a record, and silence followed it.
    bool m_isCutBySilence = false;
    Subscription m_silenceTimer;
};

} // namespace tensio
