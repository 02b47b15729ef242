// The detached processes that work a spool queue (spool_queue.h):
// bmc-alert-send and bmc-event-filter. Each leaves its starter's
// descriptors, takes records while it holds a slot, and starts afresh in
// its slot after max_worker_records.
#pragma once

#include <functional>

#include "platform/sim/spool_queue.h"

namespace platform::sim {

// Records one process handles before it starts afresh.
inline constexpr int max_worker_records = 256;
// Passes over the queue (slot taken, records taken, slot freed) per process.
inline constexpr int max_worker_passes = 1024;

// The starter's descriptors (a client connection above all) must not stay
// open while the worker waits on anything slow.
void detach_descriptors();

// Replaces the process with a fresh copy of program (an absolute path, no
// arguments); safe in a signal handler.
[[noreturn]] void start_afresh(const char* program);

// Runs handle_next, which takes and handles one record (false when the
// queue is empty), while it holds slot. After freeing the slot it looks
// once more (queued): a record queued while every slot looked busy is not
// left behind. Returns when the queue is empty or another process holds
// the slot.
void work_queue(spool_slot& slot, const std::function<bool()>& handle_next,
                const std::function<bool()>& queued, const char* program);

}  // namespace platform::sim
