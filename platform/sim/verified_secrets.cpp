#include "platform/sim/verified_secrets.h"

#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <openssl/hmac.h>
#include <openssl/rand.h>

#include <array>
#include <string>

namespace platform::sim {
namespace {

constexpr std::size_t digest_size = 32;
// Accounts that one process serves in turn.
constexpr std::size_t remembered_pairs = 8;

using digest = std::array<unsigned char, digest_size>;

struct memory {
    bool keyed = false;
    std::array<unsigned char, digest_size> key{};
    std::array<digest, remembered_pairs> pairs{};
    std::size_t used = 0;
    std::size_t next = 0;
};

memory& verified() {
    static memory current;
    if (!current.keyed)
        current.keyed = RAND_bytes(current.key.data(), static_cast<int>(digest_size)) == 1;
    return current;
}

// The keyed digest of the pair; the NUL keeps the two apart, as a stored
// hash holds none.
bool pair_digest(const memory& state, std::string_view stored, std::string_view secret,
                 digest& out) {
    if (!state.keyed) return false;
    std::string message;
    message.reserve(stored.size() + 1 + secret.size());
    message.append(stored).append(1, '\0').append(secret);
    unsigned int length = 0;
    const bool made = HMAC(EVP_sha256(), state.key.data(), static_cast<int>(digest_size),
                           reinterpret_cast<const unsigned char*>(message.data()), message.size(),
                           out.data(), &length) != nullptr &&
                      length == digest_size;
    OPENSSL_cleanse(message.data(), message.size());
    return made;
}

}  // namespace

bool verified_before(std::string_view stored, std::string_view secret) {
    const memory& state = verified();
    digest wanted;
    if (!pair_digest(state, stored, secret, wanted)) return false;
    bool found = false;
    for (std::size_t i = 0; i < state.used; ++i)
        found |= CRYPTO_memcmp(state.pairs[i].data(), wanted.data(), digest_size) == 0;
    return found;
}

void remember_verified(std::string_view stored, std::string_view secret) {
    memory& state = verified();
    digest pair;
    if (!pair_digest(state, stored, secret, pair)) return;
    state.pairs[state.next] = pair;
    state.next = (state.next + 1) % remembered_pairs;
    if (state.used < remembered_pairs) ++state.used;
}

}  // namespace platform::sim
