#include "platform/sim/firmware_image.h"

#include <fcntl.h>
#include <openssl/evp.h>
#include <unistd.h>

#include <memory>
#include <sstream>

#include "platform/sim/sim_file.h"

namespace platform::sim {
namespace {

constexpr const char* magic = "TWRFW1";
constexpr size_t max_header_length = 256;
constexpr size_t max_version_length = 32;

std::string hex(const unsigned char* bytes, unsigned length) {
    static const char digits[] = "0123456789abcdef";
    std::string text;
    for (unsigned i = 0; i < length; ++i) {
        text += digits[bytes[i] >> 4];
        text += digits[bytes[i] & 0x0f];
    }
    return text;
}

using digest_context = std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)>;

std::string finish(digest_context& context) {
    unsigned char digest[EVP_MAX_MD_SIZE];
    unsigned length = 0;
    EVP_DigestFinal_ex(context.get(), digest, &length);
    return hex(digest, length);
}

// Versions end up in settings files and JSON: plain characters only.
bool plain_version(const std::string& version) {
    return !version.empty() && version.size() <= max_version_length &&
           version.find_first_not_of(
               "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"
               "._-") == std::string::npos;
}

bool parse_header(const std::string& line, firmware_image_header& header) {
    std::istringstream fields(line);
    std::string found_magic, extra;
    fields >> found_magic >> header.component >> header.version >> header.payload_size >>
        header.payload_digest;
    return fields && !(fields >> extra) && found_magic == magic && plain_version(header.version) &&
           header.payload_digest.size() == 64;
}

// Reads the header line from fd, leaving fd at the payload.
bool read_header_line(int fd, std::string& line) {
    char byte = 0;
    while (line.size() < max_header_length && ::read(fd, &byte, 1) == 1) {
        if (byte == '\n') return true;
        line += byte;
    }
    return false;
}

// Digests the rest of fd; false on a read error.
bool digest_payload(int fd, unsigned long long& size, std::string& digest) {
    digest_context context(EVP_MD_CTX_new(), EVP_MD_CTX_free);
    if (!context || EVP_DigestInit_ex(context.get(), EVP_sha256(), nullptr) != 1) return false;
    char buffer[65536];
    size = 0;
    for (;;) {
        ssize_t got = ::read(fd, buffer, sizeof buffer);
        if (got < 0) return false;
        if (got == 0) break;
        EVP_DigestUpdate(context.get(), buffer, static_cast<size_t>(got));
        size += static_cast<unsigned long long>(got);
    }
    digest = finish(context);
    return true;
}

}  // namespace

std::string make_firmware_image(const std::string& component, const std::string& version,
                                const std::string& payload) {
    digest_context context(EVP_MD_CTX_new(), EVP_MD_CTX_free);
    EVP_DigestInit_ex(context.get(), EVP_sha256(), nullptr);
    EVP_DigestUpdate(context.get(), payload.data(), payload.size());
    return std::string(magic) + " " + component + " " + version + " " +
           std::to_string(payload.size()) + " " + finish(context) + "\n" + payload;
}

bool check_firmware_image(const std::string& path, const std::string& component,
                          firmware_image_header& header, std::string& reason) {
    unique_fd fd(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    std::string line;
    unsigned long long size = 0;
    std::string digest;
    if (!fd.valid()) {
        reason = "the image cannot be read";
    } else if (!read_header_line(fd.get(), line) || !parse_header(line, header)) {
        reason = "the image has no valid header";
    } else if (header.component != component) {
        reason = "the image is for " + header.component + ", not " + component;
    } else if (!digest_payload(fd.get(), size, digest)) {
        reason = "the image cannot be read";
    } else if (size != header.payload_size || digest != header.payload_digest) {
        reason = "the image is damaged: its digest does not match";
    } else {
        return true;
    }
    return false;
}

}  // namespace platform::sim
