// The simulated BMC's IP access control, <root>/nv/bmc/ipfilter.ini:
//
//   [Filter] Enabled=0|1 (default 0)
//   [RuleN]  First, Last (dotted IPv4), Action=Allow|Deny   (N 1..16)
#pragma once

#include <cstdint>
#include <string>

namespace platform {

const std::string& ip_filter_file();

// "a.b.c.d" of an address in host order.
std::string dotted_ipv4(uint32_t address);
// The address of "a.b.c.d" in host order; false for any other text.
bool parse_ipv4(const std::string& text, uint32_t& address);

}  // namespace platform
