#include "platform/sim/verified_secrets.h"

#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <openssl/params.h>

#include <array>
#include <string>

#include "platform/sim/random_bytes.h"

namespace platform::sim {
namespace {

constexpr std::size_t digest_size = 32;
// Accounts that one process serves in turn.
constexpr std::size_t remembered_pairs = 8;

using digest = std::array<unsigned char, digest_size>;

struct memory {
    // HMAC-SHA-256 under a key drawn once: fetching the algorithm costs more
    // than the digest, so each digest starts from a copy of this.
    EVP_MAC_CTX* keyed_mac = nullptr;
    std::array<digest, remembered_pairs> pairs{};
    std::size_t used = 0;
    std::size_t next = 0;
};

EVP_MAC_CTX* new_keyed_mac() {
    std::array<unsigned char, digest_size> key{};
    if (!random_bytes(key.data(), key.size())) return nullptr;
    EVP_MAC* hmac = EVP_MAC_fetch(nullptr, "HMAC", nullptr);
    EVP_MAC_CTX* context = hmac ? EVP_MAC_CTX_new(hmac) : nullptr;
    EVP_MAC_free(hmac);
    char sha256[] = "SHA256";
    const OSSL_PARAM parameters[] = {OSSL_PARAM_construct_utf8_string("digest", sha256, 0),
                                     OSSL_PARAM_construct_end()};
    const bool keyed = context && EVP_MAC_init(context, key.data(), key.size(), parameters) == 1;
    OPENSSL_cleanse(key.data(), key.size());
    if (keyed) return context;
    EVP_MAC_CTX_free(context);
    return nullptr;
}

memory& verified() {
    static memory current;
    if (!current.keyed_mac) current.keyed_mac = new_keyed_mac();
    return current;
}

// The keyed digest of the pair; the NUL keeps the two apart, as a stored
// hash holds none.
bool pair_digest(const memory& state, std::string_view stored, std::string_view secret,
                 digest& out) {
    if (!state.keyed_mac) return false;
    EVP_MAC_CTX* context = EVP_MAC_CTX_dup(state.keyed_mac);
    const unsigned char separator = 0;
    std::size_t length = 0;
    const bool made = context &&
                      EVP_MAC_update(context, reinterpret_cast<const unsigned char*>(stored.data()),
                                     stored.size()) == 1 &&
                      EVP_MAC_update(context, &separator, 1) == 1 &&
                      EVP_MAC_update(context, reinterpret_cast<const unsigned char*>(secret.data()),
                                     secret.size()) == 1 &&
                      EVP_MAC_final(context, out.data(), &length, out.size()) == 1 &&
                      length == digest_size;
    EVP_MAC_CTX_free(context);
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
