// The heap of a service process: a small BMC runs several of them, each for
// as long as the web server lives, so none may keep what it has freed.
#pragma once

#include <ios>

namespace odata::redfish {

// Sets the allocator up before the first request: one arena, and large
// blocks mapped and unmapped on their own.
void limit_heap();

// Gives freed pages back to the system after a request that answered
// answer_bytes.
void return_free_memory(std::streamsize answer_bytes);

}  // namespace odata::redfish
