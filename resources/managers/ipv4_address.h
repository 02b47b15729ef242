// IPv4 address settings as a client writes them: strict dotted quads,
// contiguous masks, host addresses and host names.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace odata::redfish {

// "192.168.0.1": four decimal numbers 0..255 without leading zeros (which
// some parsers read as octal), nothing else.
std::optional<uint32_t> parse_ipv4(std::string_view text);

// Ones, then zeros: from /1 to /32.
bool is_subnet_mask(uint32_t mask);

// An address a host can have in the subnet: not in 0/8, 127/8 or from
// 224.0.0.0 up, and not the subnet's network or broadcast address (which
// /31 and /32 do not have).
bool is_host_address(uint32_t address, uint32_t mask);

// A DNS label: 1 to 63 letters, digits and hyphens, no hyphen at either end.
bool is_host_name(std::string_view name);

}  // namespace odata::redfish
