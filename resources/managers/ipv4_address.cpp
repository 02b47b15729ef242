#include "resources/managers/ipv4_address.h"

#include <algorithm>
#include <cctype>

namespace odata::redfish {
namespace {

constexpr std::size_t max_label_length = 63;

std::optional<uint32_t> parse_octet(std::string_view digits) {
    if (digits.empty() || digits.size() > 3 || (digits.size() > 1 && digits[0] == '0'))
        return std::nullopt;
    uint32_t value = 0;
    for (char c : digits) {
        if (c < '0' || c > '9') return std::nullopt;
        value = value * 10 + static_cast<uint32_t>(c - '0');
    }
    if (value > 255) return std::nullopt;
    return value;
}

}  // namespace

std::optional<uint32_t> parse_ipv4(std::string_view text) {
    uint32_t address = 0;
    for (int part = 0; part < 4; ++part) {
        const std::size_t dot = text.find('.');
        if ((part < 3) == (dot == std::string_view::npos)) return std::nullopt;
        const std::optional<uint32_t> octet = parse_octet(text.substr(0, dot));
        if (!octet) return std::nullopt;
        address = address << 8 | *octet;
        text = part < 3 ? text.substr(dot + 1) : std::string_view();
    }
    return address;
}

bool is_subnet_mask(uint32_t mask) {
    const uint32_t host_bits = ~mask;
    return (mask & 0x80000000u) != 0 && (host_bits & (host_bits + 1)) == 0;
}

bool is_host_address(uint32_t address, uint32_t mask) {
    const uint32_t first_octet = address >> 24;
    if (first_octet == 0 || first_octet == 127 || first_octet >= 224) return false;
    const uint32_t host_bits = ~mask;
    if (host_bits <= 1) return true;
    const uint32_t host = address & host_bits;
    return host != 0 && host != host_bits;
}

bool is_host_name(std::string_view name) {
    if (name.empty() || name.size() > max_label_length || name.front() == '-' || name.back() == '-')
        return false;
    return std::all_of(name.begin(), name.end(), [](char c) {
        return std::isalnum(static_cast<unsigned char>(c)) || c == '-';
    });
}

}  // namespace odata::redfish
