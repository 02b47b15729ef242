#include "platform/sim/password_hash.h"

#include <openssl/crypto.h>
#include <openssl/evp.h>

#include <array>
#include <charconv>
#include <cstdint>

#include "platform/sim/random_bytes.h"
#include "platform/sim/verified_secrets.h"

namespace platform::sim {
namespace {

constexpr std::string_view scheme = "pbkdf2-sha256";
constexpr int iterations = 10000;  // modest: the BMC is small
constexpr int max_iterations = 1000000;
constexpr std::size_t salt_size = 16;
constexpr std::size_t hash_size = 32;

std::string to_hex(const unsigned char* bytes, std::size_t size) {
    static const char digits[] = "0123456789abcdef";
    std::string text;
    text.reserve(2 * size);
    for (std::size_t i = 0; i < size; ++i) {
        text += digits[bytes[i] >> 4];
        text += digits[bytes[i] & 0x0F];
    }
    return text;
}

int hex_digit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return -1;
}

template <std::size_t N>
bool from_hex(std::string_view text, std::array<unsigned char, N>& bytes) {
    if (text.size() != 2 * N) return false;
    for (std::size_t i = 0; i < N; ++i) {
        int high = hex_digit(text[2 * i]);
        int low = hex_digit(text[2 * i + 1]);
        if (high < 0 || low < 0) return false;
        bytes[i] = static_cast<unsigned char>(high << 4 | low);
    }
    return true;
}

bool derive(std::string_view secret, const unsigned char* salt, int rounds,
            std::array<unsigned char, hash_size>& hash) {
    return PKCS5_PBKDF2_HMAC(secret.data(), static_cast<int>(secret.size()), salt,
                             static_cast<int>(salt_size), rounds, EVP_sha256(),
                             static_cast<int>(hash_size), hash.data()) == 1;
}

// Cuts the next '$'-separated field off text.
std::string_view next_field(std::string_view& text) {
    auto end = text.find('$');
    std::string_view field = text.substr(0, end);
    text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
    return field;
}

struct stored_form {
    int rounds = 0;
    std::array<unsigned char, salt_size> salt;
    std::array<unsigned char, hash_size> hash;
};

bool parse_stored(std::string_view stored, stored_form& form) {
    std::string_view rest = stored;
    if (next_field(rest) != scheme) return false;
    std::string_view count = next_field(rest);
    auto [end, error] = std::from_chars(count.data(), count.data() + count.size(), form.rounds);
    if (count.empty() || error != std::errc() || end != count.data() + count.size() ||
        form.rounds < 1 || form.rounds > max_iterations)
        return false;
    if (!from_hex(next_field(rest), form.salt)) return false;
    std::string_view hash_text = next_field(rest);
    return rest.empty() && from_hex(hash_text, form.hash);
}

// Derives the key of secret with the stored salt and rounds and compares.
bool derived_matches(std::string_view stored, std::string_view secret) {
    stored_form form;
    std::array<unsigned char, hash_size> actual;
    if (!parse_stored(stored, form) || !derive(secret, form.salt.data(), form.rounds, actual))
        return false;
    return CRYPTO_memcmp(form.hash.data(), actual.data(), hash_size) == 0;
}

std::string stored_text(const std::array<unsigned char, salt_size>& salt,
                        const std::array<unsigned char, hash_size>& hash) {
    return std::string(scheme) + '$' + std::to_string(iterations) + '$' +
           to_hex(salt.data(), salt.size()) + '$' + to_hex(hash.data(), hash.size());
}

}  // namespace

std::string hash_secret(std::string_view secret) {
    std::array<unsigned char, salt_size> salt;
    std::array<unsigned char, hash_size> hash;
    if (!random_bytes(salt.data(), salt.size()) || !derive(secret, salt.data(), iterations, hash))
        return {};
    return stored_text(salt, hash);
}

std::string unmatched_secret() { return stored_text({}, {}); }

bool verify_secret(std::string_view stored, std::string_view secret) {
    if (verified_before(stored, secret)) return true;
    if (!derived_matches(stored, secret)) return false;
    remember_verified(stored, secret);
    return true;
}

bool well_formed_secret(std::string_view stored) {
    stored_form form;
    return parse_stored(stored, form);
}

unsigned random_key() {
    for (int attempt = 0; attempt < 8; ++attempt) {
        uint32_t key = 0;
        if (!random_bytes(&key, sizeof key)) return 0;
        if (key != 0) return key;
    }
    return 0;
}

}  // namespace platform::sim
