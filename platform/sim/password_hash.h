// Salted password hashes of the simulated BMC: nothing it stores holds a
// password or key in plain text. The stored form is one line of text,
// "pbkdf2-sha256$<iterations>$<salt, 32 hex digits>$<hash, 64 hex digits>"
// (PBKDF2-HMAC-SHA256 over a random 16-byte salt).
#pragma once

#include <string>
#include <string_view>

namespace platform::sim {

// The stored form of secret; empty when no random salt could be drawn.
std::string hash_secret(std::string_view secret);

// A stored form with the usual iterations that no secret is found to match:
// checking against it costs what checking a wrong secret does.
std::string unmatched_secret();

// Whether secret is the one that stored was made from; the hashes are
// compared in constant time. A malformed stored form matches nothing.
bool verify_secret(std::string_view stored, std::string_view secret);

// Whether stored has the stored form above.
bool well_formed_secret(std::string_view stored);

// Four random bytes, never zero (record keys); 0 when no random bytes.
unsigned random_key();

}  // namespace platform::sim
