// The secrets that this process has verified: a client that sends Basic
// credentials with every request pays the key derivation once per process.
// Only a keyed digest of each stored hash and secret is kept (the key is
// random per process), and failed checks are never remembered, so a wrong
// password always costs the full derivation.
#pragma once

#include <string_view>

namespace platform::sim {

// Whether this pair was verified before by this process.
bool verified_before(std::string_view stored, std::string_view secret);

// Remembers a pair that has just been verified; the oldest is forgotten.
void remember_verified(std::string_view stored, std::string_view secret);

}  // namespace platform::sim
