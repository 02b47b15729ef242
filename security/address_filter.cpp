#include "security/address_filter.h"

#include <arpa/inet.h>
#include <netinet/in.h>

#include <optional>
#include <string>

#include "frontend/exception_http.h"
#include "platform/libipmi.h"
#include "platform/libweb.h"

namespace odata::redfish {
namespace {

constexpr std::string_view mapped_prefix = "::ffff:";
constexpr int address_size = 64;

// The IPv4 address in host order, also of an IPv4-mapped IPv6 text.
std::optional<uint32_t> ipv4_of(std::string_view text) {
    if (text.substr(0, mapped_prefix.size()) == mapped_prefix)
        text.remove_prefix(mapped_prefix.size());
    in_addr address{};
    if (inet_pton(AF_INET, std::string(text).c_str(), &address) != 1) return std::nullopt;
    return ntohl(address.s_addr);
}

std::string client_address() {
    char address[address_size] = "";
    GetClientIP(address, sizeof address);
    return address;
}

bool own_loopback(std::string_view address) {
    return address == "::1" || ipv4_of(address) == INADDR_LOOPBACK;
}

}  // namespace

bool address_passes(const St_IpFilterConfig& config, std::string_view address) {
    if (!config.enabled || own_loopback(address)) return true;
    const std::optional<uint32_t> ipv4 = ipv4_of(address);
    bool allow_list = false;
    for (const St_IpFilterRule& rule : config.rules) {
        if (!rule.used) continue;
        if (ipv4 && *ipv4 >= rule.first && *ipv4 <= rule.last)
            return rule.action == IP_FILTER_ALLOW;
        allow_list = allow_list || rule.action == IP_FILTER_ALLOW;
    }
    return !allow_list;
}

bool client_passes(const St_IpFilterConfig& config) {
    // The address is read only when there are rules to hold it against.
    return !config.enabled || address_passes(config, client_address());
}

void check_client_address(const std::string& uri) {
    St_IpFilterConfig config;
    if (PltIPFILTER_GetConfig(&config) != PLT_OK) {
        console_log("[ERROR] IP access control: rules unreadable\n");
        throw_http_error(500, "Base.1.10.InternalError");
    }
    if (client_passes(config)) return;
    console_log("[IPAccessControl] request from %s refused\n", client_address().c_str());
    throw_http_error(403, "Base.1.10.AccessDenied", {uri});
}

}  // namespace odata::redfish
