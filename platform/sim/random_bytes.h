// Random bytes for salts, keys and identifiers of the simulated BMC, from the
// kernel's generator: OpenSSL's would keep a generator of its own, some
// 70 KB, in every process that draws once.
#pragma once

#include <cstddef>

namespace platform::sim {

// Fills out with size random bytes; false when the kernel gives none.
bool random_bytes(void* out, std::size_t size);

}  // namespace platform::sim
