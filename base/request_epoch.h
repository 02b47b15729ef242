// Marks off the work of one request, for what may be read once and kept
// for its length: each request, each recording of inputs and each file this
// process writes starts a new epoch. Outside the service loop (the tools, a
// forked worker) there is none, and nothing may be kept.
#pragma once

#include <cstdint>

namespace platform {

// Called by the service loop before each request.
void start_request_epoch();

// A new epoch within the request, when what was read before may be stale.
void renew_request_epoch();

// The current epoch; 0 outside the service loop.
std::uint64_t request_epoch();

}  // namespace platform
