#include "platform/outbound_destinations.h"

#include <arpa/inet.h>
#include <netdb.h>
#include <netinet/in.h>

#include <algorithm>
#include <cctype>
#include <cstring>
#include <memory>

#include "base/bmc_root.h"
#include "platform/liblan.h"
#include "platform/sim/state_ini.h"

namespace platform {
namespace {

bool own_address(in_addr address) {
    St_LanConfig lan{};
    in_addr own{};
    return PltLAN_GetConfig(&lan) == PLT_OK && inet_aton(lan.ipv4_address, &own) != 0 &&
           own.s_addr == address.s_addr;
}

bool local_ipv4(in_addr address) {
    const uint32_t host_order = ntohl(address.s_addr);
    const uint8_t first = static_cast<uint8_t>(host_order >> 24);
    return first == 127 || first == 0 || (host_order >> 16) == 0xA9FE || own_address(address);
}

bool local_ipv6(const in6_addr& address) {
    if (IN6_IS_ADDR_V4MAPPED(&address) || IN6_IS_ADDR_V4COMPAT(&address)) {
        in_addr embedded{};
        std::memcpy(&embedded, address.s6_addr + 12, sizeof embedded);
        return local_ipv4(embedded);
    }
    return IN6_IS_ADDR_LOOPBACK(&address) || IN6_IS_ADDR_UNSPECIFIED(&address) ||
           IN6_IS_ADDR_LINKLOCAL(&address);
}

std::string lower_case(std::string_view text) {
    std::string lowered(text);
    std::transform(lowered.begin(), lowered.end(), lowered.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return lowered;
}

bool localhost_name(std::string_view host) {
    std::string name = lower_case(host);
    while (!name.empty() && name.back() == '.') name.pop_back();
    const std::string_view suffix = ".localhost";
    return name == "localhost" ||
           (name.size() > suffix.size() &&
            name.compare(name.size() - suffix.size(), suffix.size(), suffix) == 0);
}

}  // namespace

const std::string& outbound_settings_file() {
    static fixed_bmc_path path("/nv/redfish/outbound.ini");
    return path.get();
}

bool local_destinations_allowed() {
    return sim::stored_state_ini(outbound_settings_file())->get("Destinations.AllowLocal", 0) == 1;
}

bool is_local_address(const sockaddr* address) {
    if (!address) return false;
    if (address->sa_family == AF_INET)
        return local_ipv4(reinterpret_cast<const sockaddr_in*>(address)->sin_addr);
    if (address->sa_family == AF_INET6)
        return local_ipv6(reinterpret_cast<const sockaddr_in6*>(address)->sin6_addr);
    return false;
}

bool is_local_host(std::string_view host) {
    if (host.size() >= 2 && host.front() == '[' && host.back() == ']')
        host = host.substr(1, host.size() - 2);
    const std::string text(host.substr(0, host.find('%')));
    in_addr v4{};
    in6_addr v6{};
    // inet_aton, as resolvers do, reads "127.1" and "2130706433" too.
    if (inet_aton(text.c_str(), &v4) != 0) return local_ipv4(v4);
    if (inet_pton(AF_INET6, text.c_str(), &v6) == 1) return local_ipv6(v6);
    return localhost_name(text);
}

bool refused_address(const sockaddr* address) {
    return is_local_address(address) && !local_destinations_allowed();
}

bool refused_host(std::string_view host) {
    return is_local_host(host) && !local_destinations_allowed();
}

int allowed_socket(int family, int type, int protocol, const sockaddr* address) {
    return refused_address(address) ? -1 : ::socket(family, type, protocol);
}

std::string destination_host(std::string_view destination) {
    std::string_view rest = destination;
    const std::size_t scheme = rest.find("://");
    if (scheme != std::string_view::npos) {
        rest = rest.substr(scheme + 3);
    } else {
        for (std::string_view transport : {"udp:", "tcp:", "udp6:", "tcp6:"})
            if (lower_case(rest.substr(0, transport.size())) == transport)
                rest = rest.substr(transport.size());
    }
    rest = rest.substr(0, rest.find_first_of("/?#"));
    const std::size_t at = rest.rfind('@');
    if (at != std::string_view::npos) rest = rest.substr(at + 1);
    if (!rest.empty() && rest.front() == '[')
        return std::string(rest.substr(0, rest.find(']') + 1));
    // One colon separates a port; more make a bare IPv6 address.
    const std::size_t colon = rest.find(':');
    if (colon != std::string_view::npos && rest.find(':', colon + 1) == std::string_view::npos)
        rest = rest.substr(0, colon);
    return std::string(rest);
}

bool refused_after_lookup(std::string_view host) {
    if (local_destinations_allowed()) return false;
    if (is_local_host(host)) return true;
    std::string name(host);
    if (name.size() >= 2 && name.front() == '[') name = name.substr(1, name.size() - 2);
    addrinfo hints{};
    hints.ai_socktype = SOCK_DGRAM;
    addrinfo* found = nullptr;
    if (getaddrinfo(name.c_str(), nullptr, &hints, &found) != 0) return false;
    std::unique_ptr<addrinfo, decltype(&freeaddrinfo)> addresses(found, freeaddrinfo);
    for (const addrinfo* each = found; each; each = each->ai_next)
        if (is_local_address(each->ai_addr)) return true;
    return false;
}

}  // namespace platform
