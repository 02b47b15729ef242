#include "security/basic_credentials.h"

#include <openssl/evp.h>

#include <vector>

namespace odata::redfish {
namespace {

constexpr std::string_view scheme = "Basic ";

std::optional<std::string> decode_base64(const std::string& text) {
    if (text.empty() || text.size() % 4 != 0) return std::nullopt;
    std::vector<unsigned char> decoded(text.size() / 4 * 3 + 1);
    int length =
        EVP_DecodeBlock(decoded.data(), reinterpret_cast<const unsigned char*>(text.data()),
                        static_cast<int>(text.size()));
    if (length < 0) return std::nullopt;
    // EVP_DecodeBlock counts the padding as zero bytes.
    size_t padding = text.size() - text.find_last_not_of('=') - 1;
    if (padding > 2) return std::nullopt;
    return std::string(reinterpret_cast<const char*>(decoded.data()), length - padding);
}

}  // namespace

std::optional<basic_credentials> decode_basic_authorization(const std::string& header) {
    size_t at = header.find(scheme);
    if (at == std::string::npos) return std::nullopt;
    std::optional<std::string> decoded = decode_base64(header.substr(at + scheme.size()));
    if (!decoded || decoded->find('\0') != std::string::npos) return std::nullopt;
    size_t colon = decoded->find(':');
    if (colon == std::string::npos) return std::nullopt;
    return basic_credentials{decoded->substr(0, colon), decoded->substr(colon + 1)};
}

}  // namespace odata::redfish
